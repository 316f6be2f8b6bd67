#include "tests/component/ui/settings/SettingsFixture.h"
#include "tests/support/RecordSamples.h"
#include "ui/kit/Banner.h"
#include "ui/kit/Sheet.h"
#include "ui/kit/Switch.h"
#include "ui/kit/TextField.h"
#include "ui/settings/ApplicationChooser.h"
#include "ui/settings/ApplicationList.h"
#include "ui/settings/PermissionRow.h"
#include "ui/settings/PrivacySettingsTab.h"
#include "ui/settings/Tag.h"

#include <QFileDialog>
#include <QLabel>

namespace tessary {
namespace {

using testing::await;
using testing::eventually;

class PrivacySettingsTest : public testing::SettingsFixture {
protected:
    PrivacySettingsTest()
    {
        installed.installed = {{QStringLiteral("org.example.Vault"), QStringLiteral("Vault"), {}},
                               {QStringLiteral("org.example.Writer"), QStringLiteral("Writer"), {}}};
    }
    PermissionRow& permission(const char* name) { return static_cast<PermissionRow&>(row(name)); }
    ApplicationChooser& openChooser()
    {
        click(QStringLiteral("添加 App..."));
        auto* chooser = controller->window().findChild<ApplicationChooser*>();
        EXPECT_NE(chooser, nullptr);
        EXPECT_TRUE(eventually([&] { return list().count() > 0; }));
        return *chooser;
    }
    ApplicationList& list() { return *controller->window().findChild<ApplicationList*>(); }
    bool isChoosing() { return controller->window().findChild<ApplicationChooser*>() != nullptr; }
    void addText(const char* text)
    {
        ASSERT_TRUE(
            await(runtime.store()->insert(testing::textRecord(QString::fromUtf8(text), 1'700'000'000))));
    }
    int items() { return static_cast<int>(await(runtime.search({}, {})).size()); }
};

TEST_F(PrivacySettingsTest, PermissionsAreShownAsTheyAreAndAskedFor)
{
    permissions.setState({true, false, true});
    open(SettingsTab::Privacy);
    ASSERT_TRUE(eventually([this] { return permission("屏幕录制").isGranted(); }));
    EXPECT_TRUE(permission("提醒事项").isGranted());
    EXPECT_FALSE(permission("辅助功能").isGranted());
    EXPECT_FALSE(permission("屏幕录制").requestButton().isVisible());
    permissions.grantRequests();
    QTest::mouseClick(&permission("辅助功能").requestButton(), Qt::LeftButton);
    EXPECT_TRUE(eventually([this] { return permission("辅助功能").isGranted(); }));
    EXPECT_EQ(permissions.requests(), QStringList{QStringLiteral("accessibility")});
}

TEST_F(PrivacySettingsTest, PermissionsAreLookedAtWhenTheWindowComesToTheFront)
{
    open(SettingsTab::Privacy);
    permissions.setState({true, true, true});
    QEvent activation(QEvent::WindowActivate);
    QApplication::sendEvent(&controller->window(), &activation);
    EXPECT_TRUE(eventually([this] { return permission("提醒事项").isGranted(); }));
}

TEST_F(PrivacySettingsTest, EmptyListsSaySo)
{
    open(SettingsTab::Privacy);
    EXPECT_TRUE(holdsText(QStringLiteral("尚未排除任何 App")));
    EXPECT_TRUE(holdsText(QStringLiteral("尚未排除任何目录")));
}

TEST_F(PrivacySettingsTest, ExcludedProgramsHaveTheirNamesAndUnknownOnesThemselves)
{
    open(SettingsTab::Privacy);
    settings().setExcludedBundleIdentifiers({QStringLiteral("org.example.Vault"), QStringLiteral("XTerm")});
    EXPECT_TRUE(eventually([this] { return button(QStringLiteral("取消排除 Vault")) != nullptr; }));
    EXPECT_NE(button(QStringLiteral("取消排除 XTerm")), nullptr);
    EXPECT_FALSE(holdsText(QStringLiteral("尚未排除任何 App")));
    click(QStringLiteral("取消排除 Vault"));
    EXPECT_EQ(settings().excludedBundleIdentifiers(), QStringList{QStringLiteral("XTerm")});
    click(QStringLiteral("取消排除 XTerm"));
    EXPECT_TRUE(holdsText(QStringLiteral("尚未排除任何 App")));
}

TEST_F(PrivacySettingsTest, TheFocusStaysInTheListWhenAnEntryGoes)
{
    open(SettingsTab::Privacy);
    settings().setExcludedBundleIdentifiers({QStringLiteral("a"), QStringLiteral("b")});
    QAbstractButton* first = button(QStringLiteral("取消排除 a"));
    ASSERT_NE(first, nullptr);
    first->setFocus(Qt::TabFocusReason);
    QTest::keyClick(first, Qt::Key_Space);
    ASSERT_NE(QApplication::focusWidget(), nullptr);
    EXPECT_EQ(QApplication::focusWidget()->accessibleName(), QStringLiteral("取消排除 b"));
}

TEST_F(PrivacySettingsTest, AProgramIsFoundByTypingAndAddedByTheKeyboard)
{
    open(SettingsTab::Privacy);
    openChooser();
    QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("wri"));
    EXPECT_EQ(list().shownCount(), 1);
    press(Qt::Key_Return);
    EXPECT_EQ(settings().excludedBundleIdentifiers(), QStringList{QStringLiteral("org.example.Writer")});
    EXPECT_TRUE(settings().excludes(QStringLiteral("org.example.Writer")));
    EXPECT_TRUE(eventually([this] { return !isChoosing(); }));
    EXPECT_NE(button(QStringLiteral("取消排除 Writer")), nullptr);
}

TEST_F(PrivacySettingsTest, ArrowKeysMoveTheSelectionWhileTyping)
{
    open(SettingsTab::Privacy);
    openChooser();
    press(Qt::Key_Down);
    press(Qt::Key_Return);
    EXPECT_EQ(settings().excludedBundleIdentifiers(), QStringList{QStringLiteral("org.example.Writer")});
}

TEST_F(PrivacySettingsTest, EscapeClosesTheListAndNotTheWindow)
{
    open(SettingsTab::Privacy);
    openChooser();
    press(Qt::Key_Escape);
    EXPECT_TRUE(eventually([this] { return !isChoosing(); }));
    EXPECT_TRUE(controller->window().isVisible());
    EXPECT_TRUE(settings().excludedBundleIdentifiers().isEmpty());
}

TEST_F(PrivacySettingsTest, WhatIsExcludedAlreadyIsNotOffered)
{
    open(SettingsTab::Privacy);
    settings().setExcludedBundleIdentifiers({QStringLiteral("org.example.Vault")});
    openChooser();
    EXPECT_EQ(list().count(), 1);
}

TEST_F(PrivacySettingsTest, AWindowOnTheScreenIsPickedWhileOursStandsAside)
{
    open(SettingsTab::Privacy);
    picker.next.outcome = PickedWindow::Outcome::Picked;
    picker.next.application.bundleIdentifier = QStringLiteral("XTerm");
    openChooser();
    click(QStringLiteral("选取屏幕上的窗口..."));
    EXPECT_FALSE(controller->window().isVisible());
    EXPECT_TRUE(eventually([this] { return controller->window().isVisible(); }));
    EXPECT_EQ(settings().excludedBundleIdentifiers(), QStringList{QStringLiteral("XTerm")});
    EXPECT_EQ(view().selectedTab(), SettingsTab::Privacy);
}

TEST_F(PrivacySettingsTest, AWindowThatCannotBePickedIsTold)
{
    open(SettingsTab::Privacy);
    picker.next.outcome = PickedWindow::Outcome::NoApplication;
    openChooser();
    click(QStringLiteral("选取屏幕上的窗口..."));
    const auto* banner = view().findChild<Banner*>();
    EXPECT_TRUE(eventually([&] { return !banner->message().isEmpty(); }));
    EXPECT_TRUE(settings().excludedBundleIdentifiers().isEmpty());
}

TEST_F(PrivacySettingsTest, FoldersAreExcludedAndTakenOffAgain)
{
    open(SettingsTab::Privacy);
    click(QStringLiteral("添加排除目录..."));
    auto* dialog = page().findChild<QFileDialog*>();
    ASSERT_NE(dialog, nullptr);
    Q_EMIT dialog->fileSelected(QStringLiteral("/srv/secret"));
    Q_EMIT dialog->fileSelected(QStringLiteral("/srv/secret/"));
    dialog->close();
    EXPECT_EQ(settings().excludedDirectories(), QStringList{QStringLiteral("/srv/secret")});
    click(QStringLiteral("取消排除 /srv/secret"));
    EXPECT_TRUE(settings().excludedDirectories().isEmpty());
    EXPECT_TRUE(holdsText(QStringLiteral("尚未排除任何目录")));
}

TEST_F(PrivacySettingsTest, CancellingTheConfirmationDeletesNothing)
{
    open(SettingsTab::Privacy);
    addText("kept");
    click(QStringLiteral("清空全部数据..."));
    ASSERT_TRUE(view().confirmClearAllData());
    click(QStringLiteral("取消"));
    EXPECT_FALSE(view().confirmClearAllData());
    EXPECT_EQ(items(), 1);
    click(QStringLiteral("清空全部数据..."));
    press(Qt::Key_Escape);
    EXPECT_FALSE(view().confirmClearAllData());
    EXPECT_TRUE(controller->window().isVisible());
    EXPECT_EQ(items(), 1);
}

TEST_F(PrivacySettingsTest, TheSafeAnswerIsTheDefault)
{
    open(SettingsTab::Privacy);
    addText("kept");
    click(QStringLiteral("清空全部数据..."));
    press(Qt::Key_Return);
    EXPECT_FALSE(view().confirmClearAllData());
    EXPECT_EQ(items(), 1);
}

TEST_F(PrivacySettingsTest, ConfirmingEmptiesTheLibraryAndLeavesTheWindow)
{
    open(SettingsTab::Privacy);
    addText("gone");
    click(QStringLiteral("清空全部数据..."));
    click(QStringLiteral("清空全部数据"));
    EXPECT_FALSE(view().confirmClearAllData());
    EXPECT_TRUE(eventually([this] { return items() == 0; }));
    EXPECT_TRUE(controller->window().isVisible());
    EXPECT_EQ(view().selectedTab(), SettingsTab::Privacy);
}

TEST_F(PrivacySettingsTest, AFailureIsToldInTheWindow)
{
    open(SettingsTab::Privacy);
    runtime.reportFailure(QStringLiteral("it failed"));
    auto* banner = view().findChild<Banner*>();
    ASSERT_NE(banner, nullptr);
    EXPECT_EQ(banner->message(), QStringLiteral("it failed"));
    runtime.clearLastError();
    EXPECT_EQ(banner->message(), QString());
}

TEST_F(PrivacySettingsTest, RecognitionShowsItsLanguagesAndBindsItsSwitches)
{
    open(SettingsTab::OCR);
    QStringList tags;
    for (const Tag* tag : page().findChildren<Tag*>())
        tags.append(tag->text());
    EXPECT_EQ(tags, (QStringList{QStringLiteral("简中"), QStringLiteral("繁中"), QStringLiteral("英文"),
                                 QStringLiteral("日文")}));
    EXPECT_TRUE(holdsText(QStringLiteral("Apple Vision, 本地离线")));
    auto& accurate = control<Switch>("使用精确识别");
    QTest::mouseClick(&accurate, Qt::LeftButton);
    EXPECT_FALSE(settings().accurateOCR());
    settings().setAccurateOCR(true);
    EXPECT_TRUE(accurate.isChecked());
    QTest::mouseClick(&control<Switch>("OCR 完成后自动添加待办"), Qt::LeftButton);
    EXPECT_TRUE(settings().autoCreateReminderAfterOCR());
}

} // namespace
} // namespace tessary
