#include "platform/linux/IconTheme.h"

#include "platform/linux/KeyFile.h"

#include <QDir>
#include <QFileInfo>

#include <limits>

namespace tessary {
namespace {

constexpr qint64 kMaximumIndex = 1024 * 1024;
constexpr qsizetype kMaximumThemes = 64; // against endless inheritance
constexpr int kMaximumSize = 16'384;

int number(const KeyFile& file, const QByteArray& group, const QByteArray& key, int fallback)
{
    bool valid = false;
    const int value = file.value(group, key).value_or(QString()).toInt(&valid);
    return valid && value > 0 && value <= kMaximumSize ? value : fallback;
}

/// A name that stays inside its folder.
bool isPlainName(const QString& name)
{
    return !name.isEmpty() && !name.contains(u'/') && name != QLatin1String("..") &&
           name != QLatin1String(".");
}

} // namespace

IconTheme::IconTheme(QStringList baseFolders, QStringList unthemedFolders, QString name)
    : m_baseFolders(std::move(baseFolders)),
      m_unthemedFolders(std::move(unthemedFolders)),
      m_name(std::move(name))
{
}

QString IconTheme::find(const QString& icon, int size)
{
    if (QDir::isAbsolutePath(icon))
        return QFileInfo(icon).isFile() ? icon : QString();
    QString name = icon;
    for (const QLatin1String extension :
         {QLatin1String(".png"), QLatin1String(".svg"), QLatin1String(".xpm")}) {
        if (name.endsWith(extension)) {
            name.chop(extension.size());
            break;
        }
    }
    if (!isPlainName(name))
        return {};
    QStringList visited;
    for (const QString& start : {m_name, QStringLiteral("Adwaita"), QStringLiteral("hicolor")}) {
        const QString found = findInTheme(start, name, size, visited);
        if (!found.isEmpty())
            return found;
    }
    return findUnthemed(name);
}

QString IconTheme::findInTheme(const QString& themeName, const QString& icon, int size, QStringList& visited)
{
    // hicolor comes last, after every other theme.
    const bool early = themeName == QLatin1String("hicolor") && !visited.contains(QStringLiteral("Adwaita"));
    if (!isPlainName(themeName) || visited.contains(themeName) || visited.size() >= kMaximumThemes || early)
        return {};
    visited.append(themeName);
    const Theme searched = theme(themeName);
    const QString found = nearest(themeName, searched, icon, size);
    if (!found.isEmpty())
        return found;
    for (const QString& parent : searched.parents) {
        const QString inherited = findInTheme(parent, icon, size, visited);
        if (!inherited.isEmpty())
            return inherited;
    }
    return {};
}

QString IconTheme::nearest(const QString& themeName, const Theme& theme, const QString& icon, int size) const
{
    QString best;
    int bestDistance = std::numeric_limits<int>::max();
    int bestSize = 0;
    for (const Folder& folder : theme.folders) {
        const int distance = folder.distance(size);
        // Of two that are equally far off, the larger loses less when drawn.
        if (distance > bestDistance || (distance == bestDistance && folder.size * folder.scale <= bestSize))
            continue;
        for (const QString& base : m_baseFolders) {
            const QString file = fileNamed(base + u'/' + themeName + u'/' + folder.name, icon);
            if (file.isEmpty())
                continue;
            best = file;
            bestDistance = distance;
            bestSize = folder.size * folder.scale;
            break;
        }
    }
    return best;
}

QString IconTheme::findUnthemed(const QString& icon) const
{
    for (const QString& folder : m_baseFolders + m_unthemedFolders) {
        const QString file = fileNamed(folder, icon);
        if (!file.isEmpty())
            return file;
    }
    return {};
}

QString IconTheme::fileNamed(const QString& folder, const QString& icon)
{
    for (const QLatin1String extension :
         {QLatin1String(".png"), QLatin1String(".svg"), QLatin1String(".xpm")}) {
        const QString file = folder + u'/' + icon + extension;
        if (QFileInfo(file).isFile())
            return file;
    }
    return {};
}

const IconTheme::Theme& IconTheme::theme(const QString& name)
{
    if (const auto known = m_themes.constFind(name); known != m_themes.constEnd())
        return *known;
    Theme parsed;
    for (const QString& base : m_baseFolders) {
        const QString index = base + u'/' + name + QStringLiteral("/index.theme");
        if (QFileInfo(index).isFile()) {
            parsed = read(index);
            break;
        }
    }
    return *m_themes.insert(name, parsed);
}

IconTheme::Theme IconTheme::read(const QString& indexFile)
{
    Theme theme;
    const std::optional<KeyFile> file = KeyFile::read(indexFile, kMaximumIndex);
    if (!file)
        return theme;
    const QByteArray general("Icon Theme");
    theme.parents = file->list(general, "Inherits", u',');
    const QStringList names =
        file->list(general, "Directories", u',') + file->list(general, "ScaledDirectories", u',');
    for (const QString& name : names) {
        const QByteArray group = name.trimmed().toUtf8();
        Folder folder;
        folder.name = name.trimmed();
        folder.size = number(*file, group, "Size", 0);
        if (folder.size == 0 || folder.name.contains(QLatin1String("..")))
            continue;
        folder.scale = number(*file, group, "Scale", 1);
        folder.smallest = number(*file, group, "MinSize", folder.size);
        folder.largest = number(*file, group, "MaxSize", folder.size);
        folder.threshold = number(*file, group, "Threshold", 2);
        const QString kind = file->value(group, "Type").value_or(QString());
        if (kind == QLatin1String("Fixed"))
            folder.kind = Kind::Fixed;
        else if (kind == QLatin1String("Scalable"))
            folder.kind = Kind::Scalable;
        theme.folders.append(folder);
    }
    return theme;
}

int IconTheme::Folder::distance(int wanted) const
{
    int low = size;
    int high = size;
    if (kind == Kind::Scalable) {
        low = smallest;
        high = largest;
    } else if (kind == Kind::Threshold) {
        low = size - threshold;
        high = size + threshold;
    }
    if (wanted < low * scale)
        return low * scale - wanted;
    return std::max(0, wanted - high * scale);
}

} // namespace tessary
