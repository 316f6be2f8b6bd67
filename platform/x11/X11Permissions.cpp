#include "platform/x11/X11Permissions.h"

#include "platform/x11/XcbReply.h"

#include <xcb/xcb.h>
#include <xcb/xtest.h>

namespace tessary {
namespace {

constexpr uint8_t kMajorVersion = 2; // of XTEST
constexpr uint16_t kMinorVersion = 2;

bool canReadScreen(xcb_connection_t* connection, xcb_window_t root)
{
    const XcbReply<xcb_get_image_reply_t> image(xcb_get_image_reply(
        connection, xcb_get_image(connection, XCB_IMAGE_FORMAT_Z_PIXMAP, root, 0, 0, 1, 1, ~0U), nullptr));
    return image != nullptr;
}

/// A server may list the extension and yet refuse to talk about it.
bool canType(xcb_connection_t* connection)
{
    const xcb_query_extension_reply_t* extension = xcb_get_extension_data(connection, &xcb_test_id);
    if (extension == nullptr || extension->present == 0)
        return false;
    const XcbReply<xcb_test_get_version_reply_t> version(xcb_test_get_version_reply(
        connection, xcb_test_get_version(connection, kMajorVersion, kMinorVersion), nullptr));
    return version != nullptr;
}

PermissionState probeNow()
{
    const std::unique_ptr<xcb_connection_t, decltype(&xcb_disconnect)> connection(
        xcb_connect(nullptr, nullptr), &xcb_disconnect);
    PermissionState state;
    if (xcb_connection_has_error(connection.get()) != 0)
        return state;
    const xcb_screen_iterator_t screens = xcb_setup_roots_iterator(xcb_get_setup(connection.get()));
    state.screenRecording = screens.rem > 0 && canReadScreen(connection.get(), screens.data->root);
    state.accessibility = canType(connection.get());
    return state;
}

} // namespace

X11Permissions::X11Permissions(ReminderStore* reminders)
    : m_reminders(reminders),
      m_lane(QStringLiteral("tessary-permits"))
{
}

QCoro::Task<PermissionState> X11Permissions::probeServer()
{
    auto probing = m_lane.post(&probeNow);
    const PermissionState state = co_await probing;
    co_return state;
}

QCoro::Task<PermissionState> X11Permissions::probe()
{
    auto asking = canWriteReminders(); // both at once
    PermissionState state = co_await probeServer();
    state.reminders = co_await asking;
    co_return state;
}

QCoro::Task<bool> X11Permissions::canWriteReminders()
{
    if (m_reminders == nullptr)
        co_return false;
    try {
        const ReminderAuthorization status = co_await m_reminders->authorizationStatus();
        co_return status == ReminderAuthorization::FullAccess || status == ReminderAuthorization::WriteOnly;
    } catch (const ReminderStoreError& error) {
        qInfo("Nobody says whether reminders can be written: %s", qUtf8Printable(error.detail()));
    }
    co_return false;
}

QCoro::Task<bool> X11Permissions::requestScreenRecording()
{
    return hasScreenRecording(); // nobody is asked here
}

QCoro::Task<bool> X11Permissions::hasScreenRecording()
{
    const PermissionState state = co_await probeServer();
    co_return state.screenRecording;
}

QCoro::Task<bool> X11Permissions::requestAccessibility()
{
    const PermissionState state = co_await probeServer();
    co_return state.accessibility;
}

QCoro::Task<bool> X11Permissions::requestReminders()
{
    if (m_reminders == nullptr)
        throw ReminderStoreError(ReminderStoreError::Case::Unavailable);
    const bool isGranted = co_await m_reminders->requestFullAccess();
    co_return isGranted;
}

} // namespace tessary
