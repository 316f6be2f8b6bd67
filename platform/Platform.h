#pragma once

#include "platform/ApplicationIcons.h"
#include "platform/Clock.h"
#include "platform/DirectoryWatch.h"
#include "platform/FileManager.h"
#include "platform/GlobalHotKeyFacility.h"
#include "platform/ImageCodec.h"
#include "platform/KeystrokeSender.h"
#include "platform/LoginItem.h"
#include "platform/Pasteboard.h"
#include "platform/Permissions.h"
#include "platform/PrivacySettings.h"
#include "platform/ReminderStore.h"
#include "platform/ScreenCapture.h"
#include "platform/ScreenshotToolDefaults.h"
#include "platform/StandardFolders.h"
#include "platform/TextRecognizer.h"
#include "platform/UserDefaults.h"
#include "platform/Workspace.h"

namespace tessary {

/// The facilities of one session, handed to the runtime. Outlives it.
struct Platform {
    Clock& clock;
    Pasteboard& pasteboard;
    Workspace& workspace;
    ImageCodec& imageCodec;
    ApplicationIcons& applicationIcons;
    UserDefaults& userDefaults;
    ScreenshotToolDefaults& screenshotTool;
    StandardFolders& folders;
    GlobalHotKeyFacility& hotKeys;
    Permissions& permissions;
    DirectoryWatcher& directories;
    FileManager& fileManager;
    KeystrokeSender& keystrokes;
    LoginItem& loginItem;
    PrivacySettings& privacySettings;
    ScreenCapture& screenCapture;
    TextRecognizer& textRecognizer;
    ReminderStore& reminders;
};

} // namespace tessary
