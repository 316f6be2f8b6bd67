#include "platform/x11/X11Permissions.h"

#include "tests/support/Await.h"

namespace tessary {
namespace {

using testing::await;

TEST(X11PermissionsTest, TheScreenCanBeReadAndInputSynthesised)
{
    X11Permissions permissions;
    EXPECT_EQ(await(permissions.probe()),
              (PermissionState{.screenRecording = true, .accessibility = true, .reminders = false}));
}

TEST(X11PermissionsTest, NothingIsAllowedWithoutADisplay)
{
    const QByteArray display = qgetenv("DISPLAY");
    qputenv("DISPLAY", ":54321");
    X11Permissions permissions;
    const PermissionState state = await(permissions.probe());
    qputenv("DISPLAY", display);
    EXPECT_EQ(state, PermissionState{});
}

} // namespace
} // namespace tessary
