#include "platform/linux/DesktopPrivacySettings.h"

#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>

#include <array>

namespace tessary {
namespace {

struct Page {
    const char* anchor;
    const char* desktop; ///< As in XDG_CURRENT_DESKTOP.
    const char* program;
    const char* page; ///< Its argument.
    const char* desktopFile;
    bool isAboutProgram; ///< Takes the program's identifier besides.
};

constexpr std::array kPages{
    Page{"Privacy_ScreenCapture", "GNOME", "gnome-control-center", "applications",
         "gnome-applications-panel.desktop", true},
    Page{"Privacy_Accessibility", "GNOME", "gnome-control-center", "universal-access",
         "gnome-universal-access-panel.desktop", false},
    Page{"Privacy_Reminders", "GNOME", "gnome-control-center", "online-accounts",
         "gnome-online-accounts-panel.desktop", false},
    Page{"Privacy_Accessibility", "KDE", "systemsettings", "kcm_access", "kcm_access.desktop", false},
};

} // namespace

DesktopPrivacySettings::DesktopPrivacySettings(QStringList dataFolders, QString identifier)
    : m_dataFolders(std::move(dataFolders)),
      m_identifier(std::move(identifier)),
      m_lane(QStringLiteral("tessary-privacy"))
{
}

QCoro::Task<bool> DesktopPrivacySettings::open(QString anchor)
{
    auto opening = m_lane.post([this, anchor] { return openNow(anchor); });
    co_return co_await opening;
}

bool DesktopPrivacySettings::openNow(const QString& anchor) const
{
    const QStringList desktops = qEnvironmentVariable("XDG_CURRENT_DESKTOP").split(QLatin1Char(':'));
    for (const Page& page : kPages) {
        if (anchor != QLatin1String(page.anchor) || !desktops.contains(QLatin1String(page.desktop)))
            continue;
        const QString program = QStandardPaths::findExecutable(QLatin1String(page.program));
        if (program.isEmpty() || !isInstalled(QLatin1String(page.desktopFile)))
            return false;
        QStringList arguments{QLatin1String(page.page)};
        if (page.isAboutProgram)
            arguments.append(m_identifier);
        return QProcess::startDetached(program, arguments);
    }
    return false;
}

bool DesktopPrivacySettings::isInstalled(const QString& desktopFile) const
{
    return std::any_of(m_dataFolders.cbegin(), m_dataFolders.cend(), [&](const QString& folder) {
        return QFileInfo::exists(folder + QStringLiteral("/applications/") + desktopFile);
    });
}

} // namespace tessary
