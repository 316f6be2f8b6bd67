#include "platform/linux/XdgFolders.h"

#include "base/FileError.h"
#include "platform/linux/KeyFile.h"

#include <QDir>
#include <QFileInfo>

#include <pwd.h>
#include <unistd.h>

namespace tessary {
namespace {

constexpr qint64 kMaximumUserDirectoriesFile = 64 * 1024;

QString absolutePathIn(const char* variable)
{
    const QString value = qEnvironmentVariable(variable);
    return QDir::isAbsolutePath(value) ? QDir::cleanPath(value) : QString();
}

QString homeOfUserDatabase()
{
    std::vector<char> buffer(16 * 1024);
    passwd entry{};
    passwd* found = nullptr;
    if (::getpwuid_r(::getuid(), &entry, buffer.data(), buffer.size(), &found) != 0 || found == nullptr)
        return {};
    return QFile::decodeName(found->pw_dir);
}

/// Undoes the shell quoting of the user-directories file: `"$HOME/a \"b\""`.
QString unquoted(QString value)
{
    if (value.size() >= 2 && value.startsWith(u'"') && value.endsWith(u'"'))
        value = value.sliced(1, value.size() - 2);
    QString result;
    for (qsizetype i = 0; i < value.size(); ++i) {
        if (value.at(i) == u'\\' && i + 1 < value.size())
            ++i;
        result.append(value.at(i));
    }
    return result;
}

} // namespace

QString XdgFolders::applicationSupport() const
{
    return folder("XDG_DATA_HOME", QStringLiteral(".local/share"));
}

QString XdgFolders::configuration() const
{
    return folder("XDG_CONFIG_HOME", QStringLiteral(".config"));
}

QString XdgFolders::desktop() const
{
    return userFolder("XDG_DESKTOP_DIR", QStringLiteral("Desktop"));
}

QString XdgFolders::pictures() const
{
    return userFolder("XDG_PICTURES_DIR", QStringLiteral("Pictures"));
}

QStringList XdgFolders::dataFolders() const
{
    QStringList folders;
    try {
        folders.append(applicationSupport());
    } catch (const FileError&) {
        // Nobody's own folder; the machine's are left.
    }
    folders += listedFolders("XDG_DATA_DIRS", QStringLiteral("/usr/local/share:/usr/share"));
    folders.removeDuplicates();
    return folders;
}

QStringList XdgFolders::sharedConfigurationFolders() const
{
    return listedFolders("XDG_CONFIG_DIRS", QStringLiteral("/etc/xdg"));
}

QStringList XdgFolders::listedFolders(const char* variable, const QString& usual)
{
    const QString listed = qEnvironmentVariable(variable);
    QStringList folders;
    for (const QString& path : (listed.isEmpty() ? usual : listed).split(u':', Qt::SkipEmptyParts)) {
        if (QDir::isAbsolutePath(path))
            folders.append(QDir::cleanPath(path));
    }
    return folders;
}

QString XdgFolders::home() const
{
    const QString given = absolutePathIn("HOME");
    return given.isEmpty() ? homeOfUserDatabase() : given;
}

QString XdgFolders::folder(const char* variable, const QString& belowHome) const
{
    const QString given = absolutePathIn(variable);
    if (!given.isEmpty())
        return given;
    const QString homeFolder = home();
    if (homeFolder.isEmpty())
        throw FileError(FileError::Case::ReadNoSuchFile, QStringLiteral("~/") + belowHome);
    return QDir(homeFolder).filePath(belowHome);
}

QString XdgFolders::userFolder(const QByteArray& key, const QString& usualName) const
{
    const QString homeFolder = home();
    if (homeFolder.isEmpty())
        return {};
    std::optional<QString> named;
    const QString list = QDir(configuration()).filePath(QStringLiteral("user-dirs.dirs"));
    if (const std::optional<KeyFile> file = KeyFile::read(list, kMaximumUserDirectoriesFile))
        named = file->value({}, key);
    if (!named)
        return QDir(homeFolder).filePath(usualName);
    QString path = unquoted(*named);
    const QLatin1String homeVariable("$HOME");
    if (path == homeVariable || path.startsWith(homeVariable + u'/'))
        path.replace(0, homeVariable.size(), homeFolder);
    path = QDir::cleanPath(path);
    const bool usable = QDir::isAbsolutePath(path) && path != QDir::cleanPath(homeFolder);
    return usable ? path : QString();
}

} // namespace tessary
