#include "tests/session/x11/Requestor.h"

#include "platform/x11/XcbReply.h"

#include <poll.h>

#include <algorithm>
#include <functional>

namespace tessary::testing {

namespace {

constexpr std::chrono::seconds kPatience{15};

/// @returns the first event that satisfies the condition; others are thrown away.
XcbReply<xcb_generic_event_t> awaitEvent(xcb_connection_t* connection,
                                         const std::function<bool(const xcb_generic_event_t&)>& condition)
{
    const auto end = std::chrono::steady_clock::now() + kPatience;
    xcb_flush(connection);
    while (std::chrono::steady_clock::now() < end && xcb_connection_has_error(connection) == 0) {
        XcbReply<xcb_generic_event_t> event(xcb_poll_for_event(connection));
        if (event && condition(*event))
            return event;
        if (!event) {
            pollfd descriptor{xcb_get_file_descriptor(connection), POLLIN, 0};
            ::poll(&descriptor, 1, 100);
        }
    }
    return nullptr;
}

} // namespace

Requestor::Requestor() : m_connection(xcb_connect(nullptr, nullptr)), m_window(xcb_generate_id(m_connection))
{
    const xcb_screen_t* screen = xcb_setup_roots_iterator(xcb_get_setup(m_connection)).data;
    const uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_create_window(m_connection, XCB_COPY_FROM_PARENT, m_window, screen->root, 0, 0, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &events);
}

Requestor::~Requestor()
{
    xcb_disconnect(m_connection);
}

bool Requestor::convert(const QByteArray& target, xcb_timestamp_t time, const QByteArray& selection)
{
    xcb_convert_selection(m_connection, m_window, atom(selection), atom(target), atom("P:" + target), time);
    return awaitNotify();
}

std::optional<QList<QByteArray>> Requestor::convertMultiple(const QList<QByteArray>& targets)
{
    QList<xcb_atom_t> pairs;
    for (const QByteArray& target : targets)
        pairs << atom(target) << atom("P:" + target);
    xcb_change_property(m_connection, XCB_PROP_MODE_REPLACE, m_window, atom("P:MULTIPLE"), atom("ATOM_PAIR"),
                        32, static_cast<uint32_t>(pairs.size()), pairs.constData());
    if (!convert("MULTIPLE"))
        return std::nullopt;
    const std::optional<Value> answer = readAndDelete(atom("P:MULTIPLE"));
    if (!answer)
        return std::nullopt;
    QList<QByteArray> properties;
    const auto* words = reinterpret_cast<const xcb_atom_t*>(answer->bytes.constData());
    for (qsizetype i = 1; i < answer->bytes.size() / 4; i += 2)
        properties.append(words[i] == XCB_ATOM_NONE ? QByteArray("None") : name(words[i]));
    return properties;
}

std::optional<Requestor::Value> Requestor::take(const QByteArray& property)
{
    const xcb_atom_t from = atom(property);
    std::optional<Value> value = readAndDelete(from);
    if (!value || value->type != "INCR")
        return value;
    Value whole;
    whole.wasIncremental = true;
    for (;;) {
        if (!awaitNewValue(from))
            return std::nullopt;
        const std::optional<Value> piece = readAndDelete(from);
        if (!piece)
            return std::nullopt;
        whole.type = piece->type;
        whole.format = piece->format;
        if (piece->bytes.isEmpty())
            return whole;
        whole.bytes.append(piece->bytes);
    }
}

std::optional<Requestor::Value> Requestor::paste(const QByteArray& target, const QByteArray& selection)
{
    if (!convert(target, XCB_CURRENT_TIME, selection))
        return std::nullopt;
    return take("P:" + target);
}

bool Requestor::takeFirstPieces(const QByteArray& target, int pieces)
{
    const xcb_atom_t property = atom("P:" + target);
    if (!convert(target) || !readAndDelete(property))
        return false;
    for (int i = 0; i < pieces; ++i) {
        if (!awaitNewValue(property) || !readAndDelete(property))
            return false;
    }
    return true;
}

QList<QByteArray> Requestor::targets()
{
    QList<QByteArray> names;
    const std::optional<Value> value = paste("TARGETS");
    if (!value || value->type != "ATOM" || value->format != 32)
        return names;
    const auto* words = reinterpret_cast<const xcb_atom_t*>(value->bytes.constData());
    for (qsizetype i = 0; i < value->bytes.size() / 4; ++i)
        names.append(name(words[i]));
    return names;
}

bool Requestor::isOwned(const QByteArray& selection)
{
    const XcbReply<xcb_get_selection_owner_reply_t> reply(xcb_get_selection_owner_reply(
        m_connection, xcb_get_selection_owner(m_connection, atom(selection)), nullptr));
    return reply && reply->owner != XCB_WINDOW_NONE;
}

void Requestor::destroyWindow()
{
    xcb_destroy_window(m_connection, m_window);
    xcb_flush(m_connection);
}

int Requestor::watchers()
{
    const XcbReply<xcb_get_window_attributes_reply_t> reply(xcb_get_window_attributes_reply(
        m_connection, xcb_get_window_attributes(m_connection, m_window), nullptr));
    // An owner follows the window's end as well, which this program does not.
    return reply && (reply->all_event_masks & XCB_EVENT_MASK_STRUCTURE_NOTIFY) != 0 ? 2 : 1;
}

xcb_timestamp_t Requestor::serverTime()
{
    const xcb_atom_t property = atom("TIME");
    xcb_change_property(m_connection, XCB_PROP_MODE_APPEND, m_window, property, XCB_ATOM_INTEGER, 32, 0,
                        nullptr);
    const auto event = awaitEvent(m_connection, [property](const xcb_generic_event_t& one) {
        return (one.response_type & 0x7f) == XCB_PROPERTY_NOTIFY &&
               reinterpret_cast<const xcb_property_notify_event_t&>(one).atom == property;
    });
    return event ? reinterpret_cast<const xcb_property_notify_event_t&>(*event).time : 0;
}

xcb_atom_t Requestor::atom(const QByteArray& name)
{
    const XcbReply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(
        m_connection, xcb_intern_atom(m_connection, 0, static_cast<uint16_t>(name.size()), name.constData()),
        nullptr));
    return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

QByteArray Requestor::name(xcb_atom_t atom)
{
    const XcbReply<xcb_get_atom_name_reply_t> reply(
        xcb_get_atom_name_reply(m_connection, xcb_get_atom_name(m_connection, atom), nullptr));
    return reply ? QByteArray(xcb_get_atom_name_name(reply.get()), xcb_get_atom_name_name_length(reply.get()))
                 : QByteArray();
}

bool Requestor::awaitNotify()
{
    const auto event = awaitEvent(m_connection, [](const xcb_generic_event_t& one) {
        return (one.response_type & 0x7f) == XCB_SELECTION_NOTIFY;
    });
    return event && reinterpret_cast<const xcb_selection_notify_event_t&>(*event).property != XCB_ATOM_NONE;
}

bool Requestor::awaitNewValue(xcb_atom_t property)
{
    const auto event = awaitEvent(m_connection, [property](const xcb_generic_event_t& one) {
        if ((one.response_type & 0x7f) != XCB_PROPERTY_NOTIFY)
            return false;
        const auto& change = reinterpret_cast<const xcb_property_notify_event_t&>(one);
        return change.atom == property && change.state == XCB_PROPERTY_NEW_VALUE;
    });
    return event != nullptr;
}

std::optional<Requestor::Value> Requestor::readAndDelete(xcb_atom_t property)
{
    constexpr uint32_t kAll = 1U << 28U;
    const XcbReply<xcb_get_property_reply_t> reply(xcb_get_property_reply(
        m_connection, xcb_get_property(m_connection, 1, m_window, property, XCB_ATOM_ANY, 0, kAll), nullptr));
    if (!reply || reply->type == XCB_ATOM_NONE)
        return std::nullopt;
    return Value{name(reply->type), reply->format,
                 QByteArray(static_cast<const char*>(xcb_get_property_value(reply.get())),
                            xcb_get_property_value_length(reply.get())),
                 false};
}

} // namespace tessary::testing
