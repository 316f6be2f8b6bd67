#include "app/TessaryApp/SessionPlatform.h"

#include <QIcon>

#include <clocale>

namespace tessary {

SessionPlatform::SessionPlatform()
    : m_settings(m_folders.configuration() + QStringLiteral("/Tessary/settings.ini")),
      m_screenshotTool(m_folders),
      m_icons(m_folders.dataFolders(), QIcon::themeName()),
      m_workspace(
          DesktopEntries(m_folders.dataFolders(), QString::fromLatin1(std::setlocale(LC_MESSAGES, nullptr))))
{
}

Platform SessionPlatform::platform()
{
    return {m_clock,          m_pasteboard, m_workspace, m_imageCodec,  m_icons,      m_settings,
            m_screenshotTool, m_folders,    m_hotKeys,   m_permissions, m_directories};
}

} // namespace tessary
