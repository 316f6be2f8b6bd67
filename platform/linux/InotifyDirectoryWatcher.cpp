#include "platform/linux/InotifyDirectoryWatcher.h"

#include "base/ExpendableLane.h"
#include "platform/linux/InotifyWatch.h"

namespace tessary {

QCoro::Task<std::unique_ptr<DirectoryWatch>> InotifyDirectoryWatcher::watch(DirectoryWatchRequest request)
{
    ExpendableLane lane(QStringLiteral("com.tessary.directory-monitor"));
    auto opening = lane.post([folder = request.folder] { return InotifyFolder::open(folder); }, request.stop);
    InotifyFolder opened = co_await opening;
    co_return std::make_unique<InotifyWatch>(std::move(opened), request);
}

} // namespace tessary
