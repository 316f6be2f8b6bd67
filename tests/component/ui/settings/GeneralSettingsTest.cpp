#include "tests/component/ui/settings/SettingsFixture.h"
#include "ui/kit/Switch.h"
#include "ui/kit/SymbolButton.h"
#include "ui/settings/HotKeyButton.h"
#include "ui/settings/HotKeyCaptureView.h"
#include "ui/settings/HotKeyRecorder.h"

#include <QAccessible>
#include <QKeyEvent>

namespace tessary {
namespace {

using testing::eventually;
using HotKey = GlobalHotKeyService::HotKey;

constexpr const char* kOpen = "打开 Tessary";
constexpr const char* kOCR = "本地 OCR";
const QString kConflict = QStringLiteral("此快捷键已被其他应用或 Tessary 操作占用");

class GeneralSettingsTest : public testing::SettingsFixture {
protected:
    void SetUp() override { open(SettingsTab::General); }

    HotKeyRecorder& recorder(const char* row) { return control<HotKeyRecorder>(row); }
    void record(const char* row) { QTest::mouseClick(&recorder(row).button(), Qt::LeftButton); }
    /// Presses and lets go, as the window system tells of it.
    void strike(Qt::Key key, quint32 number, Qt::KeyboardModifiers modifiers = {})
    {
        hold(key, number, modifiers);
        QKeyEvent release(QEvent::KeyRelease, key, modifiers, number, 0, 0);
        QApplication::sendEvent(QApplication::focusWidget(), &release);
    }
    static void hold(Qt::Key key, quint32 number, Qt::KeyboardModifiers modifiers = {})
    {
        QKeyEvent press(QEvent::KeyPress, key, modifiers, number, 0, 0);
        ASSERT_NE(QApplication::focusWidget(), nullptr);
        QApplication::sendEvent(QApplication::focusWidget(), &press);
    }
};

TEST_F(GeneralSettingsTest, ASwitchAssignsItsSettingAndActs)
{
    auto& launch = control<Switch>("开机时启动 Tessary");
    EXPECT_FALSE(launch.isChecked());
    QTest::mouseClick(&launch, Qt::LeftButton);
    EXPECT_TRUE(settings().launchAtLogin());
    EXPECT_TRUE(eventually([this] { return loginItem.wasEnabled(); }));
    QTest::mouseClick(&control<Switch>("在 Dock 中显示图标"), Qt::LeftButton);
    EXPECT_TRUE(settings().showDockIcon());
    QTest::mouseClick(&control<Switch>("显示菜单栏图标"), Qt::LeftButton);
    EXPECT_FALSE(settings().showMenuBarIcon());
}

TEST_F(GeneralSettingsTest, ASwitchFollowsAChangeFromElsewhere)
{
    settings().setLaunchAtLogin(true);
    settings().setShowDockIcon(true);
    settings().setShowMenuBarIcon(false);
    EXPECT_TRUE(control<Switch>("开机时启动 Tessary").isChecked());
    EXPECT_TRUE(control<Switch>("在 Dock 中显示图标").isChecked());
    EXPECT_FALSE(control<Switch>("显示菜单栏图标").isChecked());
    EXPECT_FALSE(loginItem.wasEnabled()) << "the person did not do it here";
}

TEST_F(GeneralSettingsTest, ASwitchIsACheckBoxWithItsNameForScreenReaders)
{
    auto* face = QAccessible::queryAccessibleInterface(&control<Switch>("显示菜单栏图标"));
    ASSERT_NE(face, nullptr);
    EXPECT_EQ(face->role(), QAccessible::CheckBox);
    EXPECT_EQ(face->text(QAccessible::Name), QStringLiteral("显示菜单栏图标"));
    EXPECT_TRUE(face->state().checked);
    face->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
    EXPECT_TRUE(eventually([this] { return !settings().showMenuBarIcon(); }));
}

TEST_F(GeneralSettingsTest, ARecorderShowsItsCombination)
{
    EXPECT_EQ(recorder(kOpen).button().text(), QStringLiteral("⌥Space"));
    settings().setQuickSearchShortcut({kVirtualO, HotKeyModifier::kCommand, QStringLiteral("O")});
    EXPECT_EQ(recorder(kOpen).button().text(), QStringLiteral("⌘O"));
}

TEST_F(GeneralSettingsTest, RecordingTakesACombinationAndRegistersIt)
{
    record(kOpen);
    EXPECT_EQ(view().recordingHotKey(), HotKey::QuickSearch);
    EXPECT_EQ(recorder(kOpen).button().text(), QStringLiteral("正在录制..."));
    EXPECT_EQ(effects.keyboardWindow, controller->window().winId());
    strike(Qt::Key_O, kKeyO, Qt::MetaModifier | Qt::ShiftModifier);
    const HotKeyShortcut wanted{kVirtualO, HotKeyModifier::kCommand | HotKeyModifier::kShift,
                                QStringLiteral("O")};
    EXPECT_EQ(settings().quickSearchShortcut(), wanted);
    EXPECT_EQ(view().recordingHotKey(), std::nullopt);
    EXPECT_TRUE(eventually([&] { return hotKeys.isRegistered({*wanted.keyCode, wanted.modifiers}); }));
    EXPECT_EQ(recorder(kOpen).button().text(), QStringLiteral("⇧⌘O"));
}

TEST_F(GeneralSettingsTest, EscapeLeavesTheShortcutAndTheWindow)
{
    const HotKeyShortcut before = settings().quickSearchShortcut();
    record(kOpen);
    strike(Qt::Key_Escape, kKeyEscape);
    EXPECT_EQ(settings().quickSearchShortcut(), before);
    EXPECT_EQ(view().recordingHotKey(), std::nullopt);
    EXPECT_TRUE(controller->window().isVisible());
    EXPECT_EQ(effects.keyboardWindow, 0U);
}

TEST_F(GeneralSettingsTest, ALetterWithoutModifiersDoesNothingAndRecordingGoesOn)
{
    const HotKeyShortcut before = settings().quickSearchShortcut();
    record(kOpen);
    strike(Qt::Key_O, kKeyO);
    EXPECT_EQ(settings().quickSearchShortcut(), before);
    EXPECT_EQ(view().recordingHotKey(), HotKey::QuickSearch);
    EXPECT_EQ(row(kOpen).warning(), QString());
}

TEST_F(GeneralSettingsTest, ShiftAloneIsRefusedWithAReasonAndRecordingGoesOn)
{
    const HotKeyShortcut before = settings().quickSearchShortcut();
    record(kOpen);
    strike(Qt::Key_O, kKeyO, Qt::ShiftModifier);
    EXPECT_EQ(settings().quickSearchShortcut(), before);
    EXPECT_EQ(view().recordingHotKey(), HotKey::QuickSearch);
    EXPECT_NE(row(kOpen).warning(), QString());
    strike(Qt::Key_O, kKeyO, Qt::ControlModifier);
    EXPECT_EQ(row(kOpen).warning(), QString());
    EXPECT_EQ(settings().quickSearchShortcut().modifiers, HotKeyModifier::kControl);
}

TEST_F(GeneralSettingsTest, AKeyWithoutACodeIsRefused)
{
    record(kOpen);
    strike(Qt::Key_O, 200, Qt::ControlModifier);
    EXPECT_EQ(view().recordingHotKey(), HotKey::QuickSearch);
    EXPECT_NE(row(kOpen).warning(), QString());
}

TEST_F(GeneralSettingsTest, ModifiersAloneAreNoCombination)
{
    record(kOpen);
    strike(Qt::Key_Meta, 133, Qt::MetaModifier);
    EXPECT_EQ(view().recordingHotKey(), HotKey::QuickSearch);
    EXPECT_EQ(row(kOpen).warning(), QString());
}

TEST_F(GeneralSettingsTest, TheKeyboardIsOursUntilTheKeyIsUp)
{
    record(kOpen);
    hold(Qt::Key_O, kKeyO, Qt::MetaModifier);
    EXPECT_NE(effects.keyboardWindow, 0U) << "the held key would press the new shortcut";
    QKeyEvent release(QEvent::KeyRelease, Qt::Key_O, Qt::MetaModifier, kKeyO, 0, 0);
    QApplication::sendEvent(QApplication::focusWidget(), &release);
    EXPECT_EQ(effects.keyboardWindow, 0U);
}

TEST_F(GeneralSettingsTest, AClickElsewhereEndsRecording)
{
    record(kOpen);
    QTest::mouseClick(&row(kOCR), Qt::LeftButton);
    EXPECT_EQ(view().recordingHotKey(), std::nullopt);
    EXPECT_EQ(effects.keyboardWindow, 0U);
}

TEST_F(GeneralSettingsTest, AnotherRecorderTakesOver)
{
    record(kOpen);
    record(kOCR);
    EXPECT_EQ(view().recordingHotKey(), HotKey::LocalOCR);
    EXPECT_FALSE(recorder(kOpen).isRecording());
    EXPECT_NE(effects.keyboardWindow, 0U);
}

TEST_F(GeneralSettingsTest, ClosingAndSwitchingTabsEndRecording)
{
    record(kOpen);
    view().selectTab(SettingsTab::Storage);
    EXPECT_EQ(view().recordingHotKey(), std::nullopt);
    view().selectTab(SettingsTab::General);
    record(kOpen);
    controller->close();
    EXPECT_EQ(view().recordingHotKey(), std::nullopt);
    EXPECT_EQ(effects.keyboardWindow, 0U);
}

TEST_F(GeneralSettingsTest, LosingTheKeyboardsFocusEndsRecording)
{
    record(kOpen);
    QWidget other;
    other.show();
    other.activateWindow();
    EXPECT_TRUE(eventually([this] { return !view().recordingHotKey(); }));
}

TEST_F(GeneralSettingsTest, AKeyboardThatAnotherProgramHoldsIsTold)
{
    effects.isInputTaken = true;
    record(kOpen);
    EXPECT_EQ(view().recordingHotKey(), std::nullopt);
    EXPECT_NE(row(kOpen).warning(), QString());
}

TEST_F(GeneralSettingsTest, ACombinationThatOthersHoldIsMarkedAtOnce)
{
    hotKeys.take({kVirtualO, HotKeyModifier::kCommand});
    record(kOCR);
    strike(Qt::Key_O, kKeyO, Qt::MetaModifier);
    EXPECT_TRUE(eventually([this] { return row(kOCR).warning() == kConflict; }));
    EXPECT_EQ(row(kOpen).warning(), QString());
}

TEST_F(GeneralSettingsTest, DisablingRegistersAnewAndEndsTheConflict)
{
    hotKeys.take({kVirtualO, HotKeyModifier::kCommand});
    record(kOCR);
    strike(Qt::Key_O, kKeyO, Qt::MetaModifier);
    ASSERT_TRUE(eventually([this] { return row(kOCR).warning() == kConflict; }));
    QTest::mouseClick(&recorder(kOCR).disableButton(), Qt::LeftButton);
    EXPECT_TRUE(settings().localOCRShortcut().isDisabled());
    EXPECT_EQ(recorder(kOCR).button().text(), QStringLiteral("未设置"));
    EXPECT_TRUE(eventually([this] { return row(kOCR).warning().isEmpty(); }));
    EXPECT_EQ(hotKeys.registrations(), 2);
}

} // namespace
} // namespace tessary
