#include "tests/session/panel/ScreenReaderSession.h"
#include "tests/support/RecordSamples.h"

#include <QSettings>

namespace tessary::testing {
namespace {

class SettingsAccessibilityTest : public ScreenReaderSession {
protected:
    void openSettings()
    {
        startWithPanel();
        EXPECT_EQ(run({QStringLiteral("settings")})->exitCode(), 0);
    }
    void press(const char* role, const char* name) { act(role, name, "Press"); }
    void act(const char* role, const char* name, const char* action)
    {
        reader({QStringLiteral("act"), QLatin1String(role), QString::fromUtf8(name), QLatin1String(action)});
    }
    void expectState(const char* role, const char* name, const char* state)
    {
        reader({QStringLiteral("state"), QLatin1String(role), QString::fromUtf8(name), QLatin1String(state)});
    }
    void expectThere(const char* role, const char* name)
    {
        reader({QStringLiteral("find"), QLatin1String(role), QString::fromUtf8(name)});
    }
    ::testing::AssertionResult stores(const char* key, const QString& value)
    {
        if (eventually([&] { return stored(key) == value; }))
            return ::testing::AssertionSuccess();
        return ::testing::AssertionFailure() << key << " is " << stored(key).toStdString();
    }
    QString stored(const char* key)
    {
        return QSettings(settingsPath(), QSettings::IniFormat)
            .value(QLatin1String(key))
            .toStringList()
            .join(u',');
    }
};

TEST_F(SettingsAccessibilityTest, EverySwitchPickerAndShortcutIsSetByTheTree)
{
    openSettings();
    for (const auto& [name, key] : {std::pair("在 Dock 中显示图标", "showDockIcon"),
                                    std::pair("开机时启动 Tessary", "launchAtLogin")}) {
        expectState("check box", name, "!checked");
        act("check box", name, "Toggle");
        EXPECT_TRUE(stores(key, QStringLiteral("true")));
        expectState("check box", name, "checked");
    }
    act("check box", "显示菜单栏图标", "Toggle");
    EXPECT_TRUE(stores("showMenuBarIcon", QStringLiteral("false")));
    expectThere("push button", "⌃⌥Space");

    press("page tab", "存储");
    press("combo box", "回收站保留时间");
    press("menu item", "1 年");
    EXPECT_TRUE(stores("trashRetentionDays", QStringLiteral("365")));
    press("combo box", "最大存储空间");
    press("menu item", "5 GB");
    EXPECT_TRUE(stores("maxStorageGB", QStringLiteral("5")));
    act("check box", "超过上限时自动清理", "Toggle");
    EXPECT_TRUE(stores("automaticStorageCleanup", QStringLiteral("true")));

    press("page tab", "OCR");
    act("check box", "使用精确识别", "Toggle");
    EXPECT_TRUE(stores("accurateOCR", QStringLiteral("false")));
    act("check box", "OCR 完成后自动添加待办", "Toggle");
    EXPECT_TRUE(stores("autoCreateReminderAfterOCR", QStringLiteral("true")));
}

TEST_F(SettingsAccessibilityTest, WhatIsExcludedIsTakenOffAndClearingIsGivenUp)
{
    set(QStringLiteral("excludedBundleIdentifiers=org.example.Vault"));
    prepare({textRecord(QStringLiteral("kept"), 1'700'000'000)});
    openSettings();
    press("page tab", "隐私");
    expectThere("label", "org.example.Vault");
    press("push button", "取消排除 org.example.Vault");
    expectThere("label", "尚未排除任何 App");
    EXPECT_TRUE(stores("excludedBundleIdentifiers", QString()));
    press("push button", "清空全部数据...");
    expectThere("label", "永久清空 Tessary 的全部剪贴板内容与元数据？");
    press("push button", "取消");
    reader({QStringLiteral("gone"), QStringLiteral("push button"), QStringLiteral("取消")});
    EXPECT_TRUE(holdsText(QStringLiteral("kept")));
}

TEST_F(SettingsAccessibilityTest, AFileThatAnotherProgramRewritesShowsAtOnce)
{
    set(QStringLiteral("trashRetentionDays=14")); // which is none of the choices
    openSettings();
    press("page tab", "存储");
    expectThere("combo box", "14 天");
    {
        QSettings file(settingsPath(), QSettings::IniFormat);
        file.setValue(QStringLiteral("trashRetentionDays"), 7);
        file.setValue(QStringLiteral("automaticStorageCleanup"), true);
    }
    expectThere("combo box", "7 天");
    expectState("check box", "超过上限时自动清理", "checked");
}

} // namespace
} // namespace tessary::testing
