#include "app/TessaryApp/SessionPlatform.h"

#include "app/ApplicationIdentity.h"
#include "base/FileError.h"
#include "platform/x11/StartupIdentifier.h"

#include <QCoreApplication>
#include <QIcon>

#include <clocale>

namespace tessary {
namespace {

QString settingsPath(const XdgFolders& folders)
{
    try {
        return folders.configuration() + QStringLiteral("/Tessary/settings.ini");
    } catch (const FileError&) {
        return {}; // a person without a home has settings for as long as the program runs
    }
}

} // namespace

SessionPlatform::SessionPlatform()
    : m_settings(settingsPath(m_folders)),
      m_screenshotTool(m_folders),
      m_icons(m_folders.dataFolders(), QIcon::themeName()),
      m_entries(m_folders.dataFolders(), QString::fromLatin1(std::setlocale(LC_MESSAGES, nullptr))),
      m_installed(m_entries),
      m_pasteboard(m_imageCodec),
      m_workspace(m_entries, applicationIdentifier()),
      m_reminders(m_folders),
      m_permissions(&m_reminders),
      m_fileManager(&x11StartupIdentifier),
      m_loginItem(m_folders, applicationIdentifier(), QCoreApplication::applicationFilePath()),
      m_privacySettings(m_folders.dataFolders(), applicationIdentifier()),
      m_windowPicker(m_entries, applicationIdentifier())
{
}

Platform SessionPlatform::platform()
{
    return {m_clock,         m_pasteboard,     m_workspace,  m_imageCodec, m_icons,
            m_settings,      m_screenshotTool, m_folders,    m_hotKeys,    m_permissions,
            m_directories,   m_fileManager,    m_keystrokes, m_loginItem,  m_privacySettings,
            m_screenCapture, m_textRecognizer, m_reminders};
}

} // namespace tessary
