#include "platform/x11/SelectionTransfer.h"

#include "platform/x11/XcbReply.h"

#include <algorithm>

namespace tessary {
namespace {

constexpr uint32_t kPieceWords = 1024 * 1024; // 4 MiB a request
constexpr qint64 kMostReserved = 64LL * 1024 * 1024;

xcb_window_t createRequestor(const X11EventLoop& loop)
{
    const xcb_window_t window = xcb_generate_id(loop.connection());
    const uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_create_window(loop.connection(), XCB_COPY_FROM_PARENT, window, loop.root(), -1, -1, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &events);
    return window;
}

} // namespace

SelectionTransfer::SelectionTransfer(X11EventLoop& loop, xcb_atom_t selection, const QByteArray& target,
                                     xcb_timestamp_t time, const TransferLimits& limits,
                                     Completion completion)
    : m_loop(loop),
      m_window(createRequestor(loop)),
      m_property(loop.atoms().atom("TESSARY_TRANSFER")),
      m_incremental(loop.atoms().atom("INCR")),
      m_limits(limits),
      m_completion(std::move(completion)),
      m_end(std::chrono::steady_clock::now() + limits.longest),
      m_timer(loop.runAt(std::chrono::steady_clock::now() + limits.patience, [this] { fail(); }))
{
    xcb_convert_selection(m_loop.connection(), m_window, selection, m_loop.atoms().atom(target), m_property,
                          time);
}

SelectionTransfer::~SelectionTransfer()
{
    m_loop.cancel(m_timer);
    xcb_destroy_window(m_loop.connection(), m_window);
}

void SelectionTransfer::handleEvent(const xcb_generic_event_t& event)
{
    constexpr uint8_t kSentFlag = 0x80;
    const int type = event.response_type & ~kSentFlag;
    if (type == XCB_SELECTION_NOTIFY) {
        const auto& notify = reinterpret_cast<const xcb_selection_notify_event_t&>(event);
        if (notify.requestor == m_window && m_reading == Reading::Whole)
            answered(notify);
    } else if (type == XCB_PROPERTY_NOTIFY) {
        const auto& notify = reinterpret_cast<const xcb_property_notify_event_t&>(event);
        if (notify.window == m_window && notify.atom == m_property &&
            notify.state == XCB_PROPERTY_NEW_VALUE && m_reading == Reading::Increments)
            increment();
    }
}

void SelectionTransfer::answered(const xcb_selection_notify_event_t& event)
{
    if (event.property == XCB_ATOM_NONE)
        return finish({Answer::Kind::Refused, {}, XCB_ATOM_NONE, 0});
    std::optional<Piece> piece = readProperty(m_limits.mostBytes);
    if (!piece || piece->type == XCB_ATOM_NONE)
        return fail();
    if (piece->type != m_incremental)
        return finish({Answer::Kind::Arrived, std::move(piece->bytes), piece->type, piece->format});
    if (announcesTooMuch(*piece))
        return fail();
    m_reading = Reading::Increments;
    noteProgress();
}

bool SelectionTransfer::announcesTooMuch(const Piece& piece) const
{
    uint32_t announced = 0; // a lower bound, if the owner tells one at all
    if (piece.format == 32 && piece.bytes.size() >= static_cast<qsizetype>(sizeof announced))
        std::copy_n(piece.bytes.constData(), sizeof announced, reinterpret_cast<char*>(&announced));
    return announced > m_limits.mostBytes;
}

void SelectionTransfer::increment()
{
    std::optional<Piece> piece = readProperty(m_limits.mostBytes - m_answer.bytes.size());
    if (!piece || piece->type == XCB_ATOM_NONE)
        return fail();
    if (piece->bytes.isEmpty()) {
        m_answer.kind = Answer::Kind::Arrived;
        return finish(std::move(m_answer));
    }
    m_answer.type = piece->type;
    m_answer.format = piece->format;
    if (m_answer.bytes.isEmpty())
        m_answer.bytes.reserve(std::min(kMostReserved, 4 * static_cast<qint64>(piece->bytes.size())));
    m_answer.bytes.append(piece->bytes);
    noteProgress();
}

std::optional<SelectionTransfer::Piece> SelectionTransfer::readProperty(qint64 most)
{
    Piece whole;
    for (;;) {
        const auto offset = static_cast<uint32_t>(whole.bytes.size() / 4);
        // Deleting tells the owner to go on; the server only does so once nothing is left to read.
        const XcbReply<xcb_get_property_reply_t> reply(xcb_get_property_reply(
            m_loop.connection(),
            xcb_get_property(m_loop.connection(), 1, m_window, m_property, XCB_ATOM_ANY, offset, kPieceWords),
            nullptr));
        if (!reply)
            return std::nullopt;
        whole.type = reply->type;
        whole.format = reply->format;
        const int size = xcb_get_property_value_length(reply.get());
        if (whole.bytes.size() + size > most || static_cast<qint64>(reply->bytes_after) > most)
            return std::nullopt;
        whole.bytes.append(static_cast<const char*>(xcb_get_property_value(reply.get())), size);
        if (reply->bytes_after == 0 || size == 0)
            return whole;
    }
}

void SelectionTransfer::noteProgress()
{
    m_loop.cancel(m_timer);
    const auto next = std::min(std::chrono::steady_clock::now() + m_limits.patience, m_end);
    m_timer = m_loop.runAt(next, [this] { fail(); });
}

void SelectionTransfer::finish(Answer answer)
{
    const Completion completion = std::exchange(m_completion, nullptr);
    if (completion)
        completion(std::move(answer)); // may be the end of this object
}

} // namespace tessary
