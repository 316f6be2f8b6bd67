#include "capture/ScreenshotFolder.h"

#include "capture/ScreenshotNames.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

namespace tessary {
namespace {

using Listing = std::unique_ptr<DIR, decltype([](DIR* listing) { ::closedir(listing); })>;

FolderIdentity identityOf(const struct stat& folder)
{
    return {folder.st_dev, folder.st_ino};
}

} // namespace

ScreenshotFolder::ScreenshotFolder(QByteArray path) : m_path(std::move(path)) {}

std::optional<FolderIdentity> ScreenshotFolder::identity() const
{
    struct stat found {};
    if (::stat(m_path.constData(), &found) != 0 || !S_ISDIR(found.st_mode))
        return std::nullopt;
    return identityOf(found);
}

ScreenshotFolder::Scan ScreenshotFolder::scan()
{
    const auto begin = std::chrono::steady_clock::now();
    Scan scan;
    const Listing listing(::opendir(m_path.constData()));
    struct stat found {};
    if (!listing || ::fstat(::dirfd(listing.get()), &found) != 0)
        return scan;
    scan.identity = identityOf(found);
    while (const dirent* entry = ::readdir(listing.get())) {
        const bool mayBeFile = entry->d_type == DT_REG || entry->d_type == DT_UNKNOWN;
        // Most entries are passed over by their names alone, without a look at the file.
        const QByteArray name = QByteArray::fromRawData(entry->d_name, qsizetype(qstrlen(entry->d_name)));
        if (mayBeFile && isScreenshotName(name) && isNews(::dirfd(listing.get()), name))
            scan.paths.append(m_path + '/' + name);
    }
    scan.cost =
        std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() - begin);
    return scan;
}

bool ScreenshotFolder::isNews(int folder, const QByteArray& name)
{
    struct stat found {};
    if (::fstatat(folder, name.constData(), &found, AT_SYMLINK_NOFOLLOW) != 0 || !S_ISREG(found.st_mode))
        return false;
    const qint64 changed = found.st_mtim.tv_sec * 1'000'000'000 + found.st_mtim.tv_nsec;
    const auto known = m_known.find(name);
    if (known != m_known.end() && *known == changed)
        return false;
    m_known.insert(QByteArray(name.constData(), name.size()), changed);
    return true;
}

} // namespace tessary
