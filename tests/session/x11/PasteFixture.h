#pragma once

#include "capture/ClipboardService.h"
#include "platform/linux/SystemClock.h"
#include "platform/linux/XdgFolders.h"
#include "platform/testing/FakeApplicationIcons.h"
#include "platform/testing/FakeDirectoryWatcher.h"
#include "platform/testing/FakeFileManager.h"
#include "platform/testing/FakeGlobalHotKeyFacility.h"
#include "platform/testing/FakeLoginItem.h"
#include "platform/testing/FakePermissions.h"
#include "platform/testing/FakePrivacySettings.h"
#include "platform/testing/FakeReminderStore.h"
#include "platform/testing/FakeScreenCapture.h"
#include "platform/testing/FakeScreenshotToolDefaults.h"
#include "platform/testing/FakeStandardFolders.h"
#include "platform/testing/FakeTextRecognizer.h"
#include "platform/testing/FakeUserDefaults.h"
#include "platform/x11/X11KeystrokeSender.h"
#include "platform/x11/X11Workspace.h"
#include "tests/session/PasteTarget.h"
#include "tests/session/x11/PasteboardFixture.h"
#include "tests/support/RecordSamples.h"

namespace tessary::testing {

/// Paste-back on the real session: the clipboard, the windows and the keyboard are those of the desktop.
class PasteFixture : public PasteboardFixture {
protected:
    ~PasteFixture() override;

    /// Starts the program and waits until it is in front.
    PasteTarget& open(PasteTarget::Kind kind, const char* title);
    /// Opens a program, then another one over it, as the panel lies over what the person came from.
    PasteTarget& openBehindAnother(PasteTarget::Kind kind);
    /// That other program.
    [[nodiscard]] PasteTarget& panel() { return *m_targets.back(); }
    [[nodiscard]] bool isInFront(PasteTarget& target);
    /// What was in front when `open` returned last, apart from the program on top.
    [[nodiscard]] const RunningApplication& previous() const { return m_previous; }

    [[nodiscard]] Platform platform(Clock& time);
    /// The person's leave to type, as the platform tells it.
    void allowTyping() { m_permissions.setState({.accessibility = true}); }
    ClipboardService::Outcome paste(const QString& text);
    [[nodiscard]] bool arrives(PasteTarget& target, const QString& text);
    static void setLayout(const QStringList& arguments);
    static void xdotool(const QStringList& arguments);

    SystemClock clock;
    X11Workspace workspace{DesktopEntries(XdgFolders().dataFolders(), QStringLiteral("C")),
                           QStringLiteral("com.tessary.Tessary")};
    X11KeystrokeSender keystrokes;

private:
    FakeApplicationIcons m_icons;
    FakeUserDefaults m_defaults;
    FakeScreenshotToolDefaults m_screenshotTool;
    FakeStandardFolders m_folders{folder.path(), folder.path()};
    FakeGlobalHotKeyFacility m_hotKeys;
    FakePermissions m_permissions;
    FakeDirectoryWatcher m_directories;
    FakeFileManager m_fileManager;
    FakeLoginItem m_loginItem;
    FakePrivacySettings m_privacySettings;
    FakeScreenCapture m_screens;
    FakeTextRecognizer m_recognizer;
    FakeReminderStore m_reminders;
    RunningApplication m_previous;
    std::vector<std::unique_ptr<PasteTarget>> m_targets;
};

} // namespace tessary::testing
