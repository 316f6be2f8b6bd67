#include "platform/x11/WindowProperties.h"

#include "platform/x11/XcbReply.h"

namespace tessary {
namespace {

constexpr uint32_t kMaximumWords = 1024;

XcbReply<xcb_get_property_reply_t> read(xcb_connection_t* connection, xcb_window_t window,
                                        xcb_atom_t property, xcb_atom_t type)
{
    return XcbReply<xcb_get_property_reply_t>(xcb_get_property_reply(
        connection, xcb_get_property(connection, 0, window, property, type, 0, kMaximumWords), nullptr));
}

} // namespace

std::optional<QByteArray> textProperty(xcb_connection_t* connection, xcb_window_t window, xcb_atom_t property)
{
    const auto reply = read(connection, window, property, XCB_GET_PROPERTY_TYPE_ANY);
    if (!reply || reply->format != 8)
        return std::nullopt;
    return QByteArray(static_cast<const char*>(xcb_get_property_value(reply.get())),
                      xcb_get_property_value_length(reply.get()));
}

std::vector<uint32_t> wordsProperty(xcb_connection_t* connection, xcb_window_t window, xcb_atom_t property,
                                    xcb_atom_t type)
{
    const auto reply = read(connection, window, property, type);
    if (!reply || reply->format != 32 || reply->type != type)
        return {};
    const auto* words = static_cast<const uint32_t*>(xcb_get_property_value(reply.get()));
    return {words,
            words + static_cast<size_t>(xcb_get_property_value_length(reply.get())) / sizeof(uint32_t)};
}

} // namespace tessary
