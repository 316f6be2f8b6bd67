#pragma once

#include "base/FileError.h"
#include "base/SerialLane.h"
#include "platform/UserDefaults.h"

#include <QHash>
#include <QObject>

#include <memory>

class QFileSystemWatcher;
class QTimer;

namespace tessary {

/// Settings in a file of Qt's INI form, keys without a group standing under `[General]`.
///
/// The file is read at construction, and again when another program has changed it. Writes are gathered for
/// 100 ms and replace the file atomically, mode 0600, on a thread of their own; destruction writes what is
/// left. What is written is what was set since, on top of what the file holds by then: nothing that another
/// program wrote meanwhile is lost. Main thread only.
class SettingsFile : public UserDefaults {
public:
    /// @param path a missing file is an empty one. One that is damaged, unreadable or over 1 MiB is renamed
    ///        to `.bad` (`.bad.2`, … when that exists) and counts as empty.
    explicit SettingsFile(const QString& path);
    ~SettingsFile() override;
    SettingsFile(const SettingsFile&) = delete;
    SettingsFile& operator=(const SettingsFile&) = delete;

    [[nodiscard]] QVariant object(const QString& key) const override { return m_values.value(key); }
    /// An invalid value removes the key.
    void set(const QString& key, const QVariant& value) override;
    void setChangeHandler(std::function<void()> handler) override { m_onChange = std::move(handler); }

    /// A sentence for the person when the file could not be used.
    [[nodiscard]] const std::optional<QString>& problem() const { return m_problem; }
    /// Called on the main thread when a write failed, and not again before one has succeeded.
    void setWriteFailureHandler(std::function<void(const FileError&)> handler);

private:
    using Values = QHash<QString, QVariant>;
    struct Outcome {
        Values written;
        std::optional<FileError> failure;
    };

    static Outcome writeNow(const Values& values, const Values& changes, const QString& path);
    void load();
    void watch();
    void readAgain();
    void adopt(const Values& values);
    void keepAside();
    void scheduleWrite();
    void write();
    void reportOutcome(const Outcome& outcome, const Values& changes);

    QString m_path;
    Values m_values;
    Values m_pending; // set, and not yet known to be in the file; an invalid value removes the key
    std::optional<QString> m_problem;
    std::function<void()> m_onChange;
    std::function<void(const FileError&)> m_onWriteFailure;
    bool m_failing = false;
    std::unique_ptr<QTimer> m_delay;
    std::unique_ptr<QTimer> m_settling; // until another program has finished writing
    std::unique_ptr<QFileSystemWatcher> m_watcher;
    std::unique_ptr<QObject> m_context; // outlives the lane; what it is told after us is dropped
    SerialLane m_lane;
};

} // namespace tessary
