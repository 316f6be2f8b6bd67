#pragma once

#include "platform/Platform.h"
#include "platform/testing/FakeApplicationIcons.h"
#include "platform/testing/FakeClock.h"
#include "platform/testing/FakeDirectoryWatcher.h"
#include "platform/testing/FakeFileManager.h"
#include "platform/testing/FakeGlobalHotKeyFacility.h"
#include "platform/testing/FakeImageCodec.h"
#include "platform/testing/FakeKeystrokeSender.h"
#include "platform/testing/FakeLoginItem.h"
#include "platform/testing/FakePasteboard.h"
#include "platform/testing/FakePermissions.h"
#include "platform/testing/FakePrivacySettings.h"
#include "platform/testing/FakeReminderStore.h"
#include "platform/testing/FakeScreenCapture.h"
#include "platform/testing/FakeScreenshotToolDefaults.h"
#include "platform/testing/FakeStandardFolders.h"
#include "platform/testing/FakeTextRecognizer.h"
#include "platform/testing/FakeUserDefaults.h"
#include "platform/testing/FakeWorkspace.h"
#include "tests/support/TemporaryFolder.h"

namespace tessary::testing {

/// Every facility of a session as a fake, with a folder of its own for the home and the data.
struct FakePlatform {
    TemporaryFolder folder;
    FakeClock clock;
    FakePasteboard pasteboard;
    FakeWorkspace workspace;
    FakeImageCodec codec;
    FakeApplicationIcons icons;
    FakeUserDefaults defaults;
    FakeScreenshotToolDefaults screenshotTool;
    FakeStandardFolders folders{folder.path(), folder.path()};
    FakeGlobalHotKeyFacility hotKeys;
    FakePermissions permissions;
    FakeDirectoryWatcher directories;
    FakeFileManager fileManager;
    FakeKeystrokeSender keystrokes;
    FakeLoginItem loginItem;
    FakePrivacySettings privacySettings;
    FakeScreenCapture screens;
    FakeTextRecognizer recognizer;
    FakeReminderStore reminders;
    Platform platform{clock,          pasteboard, workspace,       codec,       icons,       defaults,
                      screenshotTool, folders,    hotKeys,         permissions, directories, fileManager,
                      keystrokes,     loginItem,  privacySettings, screens,     recognizer,  reminders};
};

} // namespace tessary::testing
