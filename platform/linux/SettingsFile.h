#pragma once

#include "base/FileError.h"
#include "base/SerialLane.h"
#include "platform/UserDefaults.h"

#include <QHash>
#include <QObject>

#include <memory>

class QTimer;

namespace tessary {

/// Settings in a file of Qt's INI form, keys without a group standing under `[General]`.
///
/// The file is read once, at construction. Writes are gathered for 100 ms and replace the file atomically,
/// mode 0600, on a thread of their own; destruction writes what is left. Other groups and keys are kept.
/// Main thread only.
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

    /// A sentence for the person when the file could not be used.
    [[nodiscard]] const std::optional<QString>& problem() const { return m_problem; }
    /// Called on the main thread when a write failed, and not again before one has succeeded.
    void setWriteFailureHandler(std::function<void(const FileError&)> handler);

private:
    using Values = QHash<QString, QVariant>;

    void load();
    void keepAside();
    void scheduleWrite();
    void write();
    void reportOutcome(const std::optional<FileError>& failure);

    QString m_path;
    Values m_values;
    std::optional<QString> m_problem;
    std::function<void(const FileError&)> m_onWriteFailure;
    bool m_unsaved = false;
    bool m_failing = false;
    std::unique_ptr<QTimer> m_delay;
    std::unique_ptr<QObject> m_context; // outlives the lane; what it is told after us is dropped
    SerialLane m_lane;
};

} // namespace tessary
