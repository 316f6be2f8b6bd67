#include "store/AppPaths.h"

#include "base/FileError.h"
#include "platform/StandardFolders.h"

#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <sys/stat.h>

namespace tessary {
namespace {

constexpr mode_t kPrivateFolder = 0700;

bool isFolder(const QByteArray& path)
{
    struct stat status {};
    return ::stat(path.constData(), &status) == 0 && S_ISDIR(status.st_mode);
}

void createFolder(const QString& path)
{
    const QByteArray name = QFile::encodeName(path);
    if (::mkdir(name.constData(), kPrivateFolder) == 0)
        return;
    if (errno == EEXIST && isFolder(name))
        return;
    if (errno != ENOENT || QFileInfo(path).path() == path)
        throw FileError::fromErrno(errno, path, FileError::Operation::Write);
    createFolder(QFileInfo(path).path());
    if (::mkdir(name.constData(), kPrivateFolder) != 0 && errno != EEXIST)
        throw FileError::fromErrno(errno, path, FileError::Operation::Write);
}

} // namespace

AppPaths AppPaths::live(const StandardFolders& folders)
{
    return create(folders.applicationSupport() + QStringLiteral("/Tessary"));
}

AppPaths AppPaths::create(const QString& root)
{
    AppPaths paths;
    paths.root = root;
    paths.originals = root + QStringLiteral("/Originals");
    paths.thumbnails = root + QStringLiteral("/Thumbnails");
    paths.appIcons = root + QStringLiteral("/App Icons");
    for (const QString& folder : {paths.root, paths.originals, paths.thumbnails, paths.appIcons})
        createFolder(folder);
    // A library that was made or restored by other means may be open to other people.
    ::chmod(QFile::encodeName(root).constData(), kPrivateFolder);
    paths.database = root + QStringLiteral("/Tessary.sqlite3");
    return paths;
}

} // namespace tessary
