#include "app/PermissionRequests.h"

#include "app/SystemIntegrationService.h"
#include "base/FlowSet.h"
#include "platform/testing/FakeLoginItem.h"
#include "platform/testing/FakePermissions.h"
#include "platform/testing/FakePrivacySettings.h"
#include "tests/support/Await.h"

namespace tessary {
namespace {

using testing::await;

class PermissionRequestsTest : public ::testing::Test {
protected:
    PermissionRequestsTest()
    {
        QObject::connect(&requests, &PermissionRequests::changed, &requests, [this] { ++changes; });
        QObject::connect(&requests, &PermissionRequests::failed, &requests,
                         [this](const QString& message) { failures.append(message); });
    }
    void settle() { await(flows.drained()); }
    void know(PermissionState state)
    {
        permissions.setState(state);
        requests.refresh();
        settle();
    }

    testing::FakePermissions permissions;
    testing::FakeLoginItem loginItem;
    testing::FakePrivacySettings pages;
    FlowSet flows{[](const std::exception& error) { ADD_FAILURE() << error.what(); }};
    SystemIntegrationService integration{loginItem, pages};
    PermissionRequests requests{permissions, integration, flows};
    int changes = 0;
    QStringList failures;
};

TEST_F(PermissionRequestsTest, TellsOfChangesOnly)
{
    know({true, false, true});
    EXPECT_EQ(requests.state(), (PermissionState{true, false, true}));
    know({true, false, true});
    EXPECT_EQ(changes, 1);
    know({});
    EXPECT_EQ(changes, 2);
}

TEST_F(PermissionRequestsTest, TheNewestAnswerCounts)
{
    requests.refresh();
    permissions.setState({true, true, true});
    requests.refresh();
    settle();
    EXPECT_EQ(requests.state(), (PermissionState{true, true, true}));
    EXPECT_EQ(changes, 1);
}

TEST_F(PermissionRequestsTest, AScreenRecordingThatIsGrantedAtOnceOpensNoPage)
{
    permissions.grantRequests();
    requests.askForScreenRecording();
    settle();
    EXPECT_EQ(permissions.requests(), QStringList{QStringLiteral("screen")});
    EXPECT_TRUE(pages.opened().isEmpty());
    EXPECT_TRUE(requests.state().screenRecording);
}

TEST_F(PermissionRequestsTest, AScreenRecordingThatIsNotGrantedLeadsToThePage)
{
    requests.askForScreenRecording();
    settle();
    EXPECT_EQ(permissions.requests(), QStringList{QStringLiteral("screen")});
    EXPECT_EQ(pages.opened(), QStringList{QStringLiteral("Privacy_ScreenCapture")});
    EXPECT_EQ(permissions.probes(), 2) << "before, and once more at the end";
}

TEST_F(PermissionRequestsTest, AScreenRecordingThatIsThereLeadsToThePageWithoutAsking)
{
    permissions.setState({true, false, false});
    requests.askForScreenRecording();
    settle();
    EXPECT_TRUE(permissions.requests().isEmpty());
    EXPECT_EQ(pages.opened(), QStringList{QStringLiteral("Privacy_ScreenCapture")});
    EXPECT_TRUE(requests.state().screenRecording) << "and is known by then";
}

TEST_F(PermissionRequestsTest, AccessibilityIsAskedForWhileItIsMissing)
{
    permissions.grantRequests();
    requests.askForAccessibility();
    settle();
    EXPECT_EQ(permissions.requests(), QStringList{QStringLiteral("accessibility")});
    EXPECT_TRUE(requests.state().accessibility);
    EXPECT_TRUE(pages.opened().isEmpty());
    requests.askForAccessibility();
    settle();
    EXPECT_EQ(permissions.requests().size(), 1);
    EXPECT_EQ(pages.opened(), QStringList{QStringLiteral("Privacy_Accessibility")});
}

TEST_F(PermissionRequestsTest, RemindersAreAskedForWhileTheyAreMissing)
{
    permissions.grantRequests();
    requests.askForReminders();
    settle();
    EXPECT_EQ(permissions.requests(), QStringList{QStringLiteral("reminders")});
    EXPECT_TRUE(requests.state().reminders);
    requests.askForReminders();
    settle();
    EXPECT_EQ(permissions.requests().size(), 1);
    EXPECT_EQ(pages.opened(), QStringList{QStringLiteral("Privacy_Reminders")});
}

TEST_F(PermissionRequestsTest, AFailedRequestForRemindersIsTold)
{
    permissions.failRequestsWith(ReminderStoreError::Case::Unavailable);
    requests.requestReminderPermission();
    settle();
    EXPECT_EQ(failures, QStringList{QStringLiteral("无法申请提醒事项权限：提醒事项服务不可用。")});
    EXPECT_FALSE(requests.state().reminders);
}

} // namespace
} // namespace tessary
