#pragma once

#include <QByteArray>
#include <QString>

#include <qcoro/qcorotask.h>

#include <functional>
#include <memory>
#include <stop_token>

namespace tessary {

/// Which folder it is, whatever its name leads to later.
struct FolderIdentity {
    quint64 device = 0;
    quint64 inode = 0;
    friend bool operator==(const FolderIdentity&, const FolderIdentity&) = default;
};

enum class DirectoryChange {
    Entries,    ///< Entries were added, changed, renamed or removed.
    FolderGone, ///< The folder was removed, moved or unmounted; nothing more is told.
};

/// What to watch, and whom to tell.
struct DirectoryWatchRequest {
    QString folder;
    /// Whether changes of the entry of that name, as the file system has it, are to be told.
    std::function<bool(const QByteArray& name)> concerns;
    /// Called on the main thread; a burst may be told once. May end the watch.
    std::function<void(DirectoryChange change)> changed;
    /// Gives up the opening.
    std::stop_token stop;
};

/// An open watch on one folder; destroying it ends the watch.
class DirectoryWatch {
public:
    virtual ~DirectoryWatch() = default;
    [[nodiscard]] virtual FolderIdentity identity() const = 0;
};

/// Opens watches on folders. Main thread only, which never waits for the file system: neither when a watch
/// is opened nor when one ends.
class DirectoryWatcher {
public:
    virtual ~DirectoryWatcher() = default;
    /// @throws FileError when the folder cannot be watched; Abandoned when the opening was given up.
    [[nodiscard]] virtual QCoro::Task<std::unique_ptr<DirectoryWatch>>
    watch(DirectoryWatchRequest request) = 0;
};

} // namespace tessary
