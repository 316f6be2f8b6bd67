#include "platform/x11/X11Permissions.h"

#include "platform/testing/FakeReminderStore.h"
#include "tests/support/Await.h"

namespace tessary {
namespace {

using testing::await;

TEST(X11PermissionsTest, TheScreenCanBeReadAndInputSynthesised)
{
    X11Permissions permissions;
    EXPECT_EQ(await(permissions.probe()),
              (PermissionState{.screenRecording = true, .accessibility = true, .reminders = false}));
    EXPECT_TRUE(await(permissions.requestScreenRecording()));
    EXPECT_TRUE(await(permissions.requestAccessibility()));
    EXPECT_THROW(await(permissions.requestReminders()), ReminderStoreError);
}

TEST(X11PermissionsTest, RemindersAreGrantedAsTheirStoreSays)
{
    testing::FakeReminderStore store;
    X11Permissions permissions(&store);
    for (const auto& [status, isGranted] :
         {std::pair(ReminderAuthorization::NotDetermined, false),
          std::pair(ReminderAuthorization::Restricted, false),
          std::pair(ReminderAuthorization::Denied, false), std::pair(ReminderAuthorization::FullAccess, true),
          std::pair(ReminderAuthorization::WriteOnly, true)}) {
        store.status = status;
        EXPECT_EQ(await(permissions.probe()).reminders, isGranted) << static_cast<int>(status);
    }
    EXPECT_EQ(store.requests, 0) << "looking asks nobody";
    EXPECT_FALSE(await(permissions.requestReminders()));
    store.grants = true;
    EXPECT_TRUE(await(permissions.requestReminders()));
    EXPECT_EQ(store.requests, 2);
}

TEST(X11PermissionsTest, NothingIsAllowedWithoutADisplay)
{
    const QByteArray display = qgetenv("DISPLAY");
    qputenv("DISPLAY", ":54321");
    X11Permissions permissions;
    EXPECT_FALSE(await(permissions.requestScreenRecording()));
    EXPECT_FALSE(await(permissions.requestAccessibility()));
    const PermissionState state = await(permissions.probe());
    qputenv("DISPLAY", display);
    EXPECT_EQ(state, PermissionState{});
}

} // namespace
} // namespace tessary
