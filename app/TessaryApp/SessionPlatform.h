#pragma once

#include "platform/Platform.h"
#include "platform/linux/AutostartEntry.h"
#include "platform/linux/DesktopApplicationIcons.h"
#include "platform/linux/DesktopFileManager.h"
#include "platform/linux/DesktopInstalledApplications.h"
#include "platform/linux/DesktopPrivacySettings.h"
#include "platform/linux/DesktopScreenshotDefaults.h"
#include "platform/linux/InotifyDirectoryWatcher.h"
#include "platform/linux/PortalAppearance.h"
#include "platform/linux/SettingsFile.h"
#include "platform/linux/SystemClock.h"
#include "platform/linux/XdgFolders.h"
#include "platform/reminders/DesktopReminders.h"
#include "platform/workers/ImagingWorkerCodec.h"
#include "platform/workers/RecognizerWorker.h"
#include "platform/x11/X11GlobalHotKeys.h"
#include "platform/x11/X11KeystrokeSender.h"
#include "platform/x11/X11Pasteboard.h"
#include "platform/x11/X11Permissions.h"
#include "platform/x11/X11ScreenCapture.h"
#include "platform/x11/X11StatusHosts.h"
#include "platform/x11/X11WindowEffects.h"
#include "platform/x11/X11WindowPicker.h"
#include "platform/x11/X11Workspace.h"

namespace tessary {

/// The facilities of the session that we run in. Main thread only; outlives the runtime.
class SessionPlatform {
public:
    /// @throws X11Error without a display; FileError without a place for settings.
    SessionPlatform();

    [[nodiscard]] Platform platform();
    [[nodiscard]] DesktopAppearance& appearance() { return m_appearance; }
    [[nodiscard]] StatusHosts& statusHosts() { return m_statusHosts; }
    [[nodiscard]] WindowEffects& windowEffects() { return m_windowEffects; }
    [[nodiscard]] InstalledApplications& installedApplications() { return m_installed; }
    [[nodiscard]] WindowPicker& windowPicker() { return m_windowPicker; }
    /// What the person should know about the settings file, if anything.
    [[nodiscard]] const std::optional<QString>& settingsProblem() const { return m_settings.problem(); }

private:
    XdgFolders m_folders;
    SystemClock m_clock;
    PortalAppearance m_appearance;
    SettingsFile m_settings;
    DesktopScreenshotDefaults m_screenshotTool;
    DesktopApplicationIcons m_icons;
    DesktopEntries m_entries; // never looked at; others have copies of their own
    DesktopInstalledApplications m_installed;
    InotifyDirectoryWatcher m_directories;
    ImagingWorkerCodec m_imageCodec;
    X11Pasteboard m_pasteboard;
    X11Workspace m_workspace;
    X11GlobalHotKeys m_hotKeys;
    DesktopReminders m_reminders;
    X11Permissions m_permissions; // asks the reminders
    X11KeystrokeSender m_keystrokes;
    DesktopFileManager m_fileManager;
    AutostartEntry m_loginItem;
    DesktopPrivacySettings m_privacySettings;
    X11ScreenCapture m_screenCapture;
    RecognizerWorker m_textRecognizer;
    X11StatusHosts m_statusHosts;
    X11WindowEffects m_windowEffects;
    X11WindowPicker m_windowPicker;
};

} // namespace tessary
