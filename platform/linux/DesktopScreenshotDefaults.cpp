#include "platform/linux/DesktopScreenshotDefaults.h"

#include "base/FileError.h"
#include "platform/linux/KeyFile.h"

#include <QDir>
#include <QFileInfo>
#include <QUrl>

#include <array>

namespace tessary {
namespace {

/// Where a tool keeps its folder.
struct Setting {
    QLatin1String desktop;
    QLatin1String file; ///< Below the configuration folder.
    const char* group;
    const char* key;
};

/// Newer places first. "$e" in a key marks a value in which variables are to be resolved.
constexpr std::array kSettings{
    Setting{QLatin1String("GNOME"), QLatin1String("glib-2.0/settings/keyfile"), "org/gnome/gnome-screenshot",
            "auto-save-directory"},
    Setting{QLatin1String("KDE"), QLatin1String("spectaclerc"), "ImageSave", "imageSaveLocation"},
    Setting{QLatin1String("KDE"), QLatin1String("spectaclerc"), "ImageSave", "imageSaveLocation[$e]"},
    Setting{QLatin1String("KDE"), QLatin1String("spectaclerc"), "Save", "defaultSaveLocation"},
    Setting{QLatin1String("KDE"), QLatin1String("spectaclerc"), "Save", "defaultSaveLocation[$e]"},
    Setting{QLatin1String("XFCE"), QLatin1String("xfce4/xfce4-screenshooter"), "", "screenshot_dir"},
    Setting{QLatin1String("XFCE"), QLatin1String("xfce4/xfce4-screenshooter"), "NULL", "screenshot_dir"},
};
constexpr qint64 kMaximumFile = 256 * 1024;

bool isRunning(QLatin1String desktop)
{
    const QStringList running = qEnvironmentVariable("XDG_CURRENT_DESKTOP").split(u':', Qt::SkipEmptyParts);
    return running.contains(desktop, Qt::CaseInsensitive);
}

} // namespace

std::optional<QString> DesktopScreenshotDefaults::location() const
{
    if (const std::optional<QString> folder = configured())
        return folder;
    const QString pictures = m_folders.pictures();
    const QString screenshots = QDir(pictures).filePath(QStringLiteral("Screenshots"));
    if (!pictures.isEmpty() && QFileInfo(screenshots).isDir())
        return screenshots;
    return std::nullopt;
}

std::optional<QString> DesktopScreenshotDefaults::configured() const
{
    QString configuration;
    try {
        configuration = m_folders.configuration();
    } catch (const FileError&) {
        return std::nullopt;
    }
    std::optional<QString> other;
    for (const Setting& setting : kSettings) {
        const bool running = isRunning(setting.desktop);
        if (other && !running)
            continue;
        const auto file = KeyFile::read(QDir(configuration).filePath(setting.file), kMaximumFile);
        const auto value = file ? file->value(setting.group, setting.key) : std::nullopt;
        const auto path = value ? pathFrom(*value) : std::nullopt;
        if (path && running)
            return path;
        if (path)
            other = path;
    }
    return other;
}

std::optional<QString> DesktopScreenshotDefaults::pathFrom(QString setting) const
{
    const bool quoted = setting.size() >= 2 && setting.front() == setting.back() &&
                        (setting.front() == u'\'' || setting.front() == u'"');
    if (quoted)
        setting = setting.sliced(1, setting.size() - 2);
    // Not through a URL class: a variable may stand where a host would.
    for (const QLatin1String scheme : {QLatin1String("file://"), QLatin1String("file:")}) {
        if (setting.startsWith(scheme)) {
            setting = QUrl::fromPercentEncoding(setting.sliced(scheme.size()).toUtf8());
            break;
        }
    }
    for (const QLatin1String home : {QLatin1String("~"), QLatin1String("$HOME"), QLatin1String("${HOME}")}) {
        if (setting == home || setting.startsWith(home + u'/')) {
            setting.replace(0, home.size(), m_folders.home());
            break;
        }
    }
    if (!QDir::isAbsolutePath(setting))
        return std::nullopt;
    return QDir::cleanPath(setting);
}

} // namespace tessary
