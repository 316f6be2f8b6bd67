#pragma once

#include "platform/DirectoryWatch.h"

#include <QObject>

#include <map>
#include <memory>
#include <set>

class QSocketNotifier;
class QTimer;

namespace tessary {

/// Watches folders through inotify. Main thread only; must outlive its watches.
///
/// A change is told once for all events of the following 50 ms. When the folder itself is removed, moved or
/// unmounted, that is told too, and the watch hears nothing more: its owner opens another.
class InotifyDirectoryWatcher : public DirectoryWatcher {
public:
    InotifyDirectoryWatcher();
    ~InotifyDirectoryWatcher() override;
    InotifyDirectoryWatcher(const InotifyDirectoryWatcher&) = delete;
    InotifyDirectoryWatcher& operator=(const InotifyDirectoryWatcher&) = delete;

    [[nodiscard]] std::unique_ptr<DirectoryWatch> watch(const QString& folder,
                                                        std::function<void()> changed) override;

private:
    class Watch;
    struct Entry {
        int descriptor; ///< Shared by all watches of one folder.
        std::function<void()> changed;
    };

    void readEvents();
    void noteChange(int descriptor);
    void noteChangeOfAll();
    void tell();
    void remove(quint64 number);

    int m_inotify;
    int m_openError = 0;
    std::map<quint64, Entry> m_watches;
    std::set<quint64> m_changed;
    quint64 m_lastNumber = 0;
    std::unique_ptr<QSocketNotifier> m_notifier;
    std::unique_ptr<QTimer> m_burst;
};

} // namespace tessary
