#include "platform/x11/X11Permissions.h"

#include "tests/support/Await.h"

namespace tessary {
namespace {

using testing::await;

TEST(X11PermissionsTest, TheScreenCanBeReadAndInputSynthesised)
{
    X11Permissions permissions(QStringLiteral("unix:path=/not/there"));
    EXPECT_EQ(await(permissions.probe()),
              (PermissionState{.screenRecording = true, .accessibility = true, .reminders = false}));
    EXPECT_TRUE(await(permissions.requestScreenRecording()));
    EXPECT_TRUE(await(permissions.requestAccessibility()));
    EXPECT_THROW(await(permissions.requestReminders()), PermissionError);
}

TEST(X11PermissionsTest, NothingIsAllowedWithoutADisplay)
{
    const QByteArray display = qgetenv("DISPLAY");
    qputenv("DISPLAY", ":54321");
    X11Permissions permissions(QStringLiteral("unix:path=/not/there"));
    EXPECT_FALSE(await(permissions.requestScreenRecording()));
    EXPECT_FALSE(await(permissions.requestAccessibility()));
    const PermissionState state = await(permissions.probe());
    qputenv("DISPLAY", display);
    EXPECT_EQ(state, PermissionState{});
}

} // namespace
} // namespace tessary
