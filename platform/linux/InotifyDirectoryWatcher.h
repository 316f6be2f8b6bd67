#pragma once

#include "platform/DirectoryWatch.h"

namespace tessary {

/// Watches folders through inotify.
///
/// A change is told once for all events of the following 50 ms. Watches are opened and closed on threads of
/// their own, which a file system that hangs may keep.
class InotifyDirectoryWatcher : public DirectoryWatcher {
public:
    [[nodiscard]] QCoro::Task<std::unique_ptr<DirectoryWatch>> watch(DirectoryWatchRequest request) override;
};

} // namespace tessary
