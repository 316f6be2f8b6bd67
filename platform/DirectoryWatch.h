#pragma once

#include <QString>

#include <functional>
#include <memory>

namespace tessary {

/// An open watch on one folder; destroying it ends the watch.
class DirectoryWatch {
public:
    virtual ~DirectoryWatch() = default;
};

/// Opens watches on folders.
class DirectoryWatcher {
public:
    virtual ~DirectoryWatcher() = default;
    /// Calls back, on the main thread, after entries of the folder were added, changed, renamed or removed;
    /// a burst may be told once. @throws FileError when the folder cannot be watched.
    [[nodiscard]] virtual std::unique_ptr<DirectoryWatch> watch(const QString& folder,
                                                                std::function<void()> changed) = 0;
};

} // namespace tessary
