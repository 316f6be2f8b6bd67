#include "platform/x11/OutgoingTransfer.h"

#include "platform/x11/XcbReply.h"

#include <algorithm>
#include <utility>

namespace tessary {
namespace {

constexpr qint64 kLargestPiece = 256 * 1024;

/// What fits into one request, whose header takes 24 bytes or 28.
qint64 pieceSizeFor(xcb_connection_t* connection)
{
    constexpr qint64 kWordBytes = 4;
    constexpr qint64 kHeaderBytes = 32;
    return std::min(kLargestPiece, kWordBytes * xcb_get_maximum_request_length(connection) - kHeaderBytes);
}

} // namespace

OutgoingTransfer::OutgoingTransfer(X11EventLoop& loop, SerialLane& reader, Destination destination,
                                   OfferedBytes bytes, std::chrono::milliseconds patience,
                                   Callbacks callbacks)
    : m_loop(loop),
      m_reader(reader),
      m_destination(destination),
      m_bytes(std::move(bytes)),
      m_patience(patience),
      m_callbacks(std::move(callbacks)),
      m_pieceSize(pieceSizeFor(loop.connection()))
{
}

OutgoingTransfer::~OutgoingTransfer()
{
    m_loop.cancel(m_timer);
}

void OutgoingTransfer::start()
{
    if (m_bytes.size() > m_pieceSize)
        return announce();
    sendNext();
}

void OutgoingTransfer::handleEvent(const xcb_generic_event_t& event)
{
    if (!m_isIncremental)
        return;
    const int type = event.response_type & 0x7f;
    if (type == XCB_DESTROY_NOTIFY) {
        const auto& notify = reinterpret_cast<const xcb_destroy_notify_event_t&>(event);
        if (notify.window == m_destination.requestor)
            finish();
    } else if (type == XCB_PROPERTY_NOTIFY) {
        const auto& notify = reinterpret_cast<const xcb_property_notify_event_t&>(event);
        if (notify.window == m_destination.requestor && notify.atom == m_destination.property &&
            notify.state == XCB_PROPERTY_DELETE && !m_isReading)
            sendNext();
    }
}

/// Tells the size; the requestor asks for the first piece by deleting that.
void OutgoingTransfer::announce()
{
    xcb_connection_t* x = m_loop.connection();
    const uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    const XcbReply<xcb_generic_error_t> error(xcb_request_check(
        x, xcb_change_window_attributes_checked(x, m_destination.requestor, XCB_CW_EVENT_MASK, &events)));
    if (error) {
        place(false);
        return finish();
    }
    m_isIncremental = true;
    const auto size =
        static_cast<uint32_t>(std::min<qint64>(m_bytes.size(), std::numeric_limits<uint32_t>::max()));
    xcb_change_property(x, XCB_PROP_MODE_REPLACE, m_destination.requestor, m_destination.property,
                        m_loop.atoms().atom("INCR"), 32, 1, &size);
    expectProgress();
    place(true);
}

void OutgoingTransfer::sendNext()
{
    const qint64 length = std::min(m_pieceSize, m_bytes.size() - m_sent);
    if (!m_bytes.blocks() || length == 0)
        return send(length == 0 ? QByteArray() : m_bytes.read(m_sent, length), length);
    read(length);
}

void OutgoingTransfer::read(qint64 length)
{
    m_isReading = true;
    m_reader.postDetached(
        [self = weak_from_this(), &loop = m_loop, bytes = m_bytes, offset = m_sent, length] {
            loop.post([self, piece = bytes.read(offset, length), length] {
                if (const auto transfer = self.lock()) {
                    transfer->m_isReading = false;
                    transfer->send(piece, length);
                }
            });
        });
}

/// An empty piece tells the requestor that it has everything, so one that could not be read is not sent.
void OutgoingTransfer::send(const QByteArray& piece, qint64 expected)
{
    if (piece.size() != expected) {
        place(false);
        return finish();
    }
    xcb_change_property(m_loop.connection(), XCB_PROP_MODE_REPLACE, m_destination.requestor,
                        m_destination.property, m_destination.type, 8, static_cast<uint32_t>(piece.size()),
                        piece.constData());
    m_sent += piece.size();
    if (m_callbacks.progressed)
        m_callbacks.progressed();
    place(true);
    if (!m_isIncremental || piece.isEmpty())
        return finish();
    expectProgress();
}

void OutgoingTransfer::place(bool isPlaced)
{
    if (const auto placed = std::exchange(m_callbacks.placed, nullptr))
        placed(isPlaced);
}

void OutgoingTransfer::expectProgress()
{
    m_loop.cancel(m_timer);
    m_timer = m_loop.runAt(std::chrono::steady_clock::now() + m_patience, [this] { finish(); });
}

void OutgoingTransfer::finish()
{
    m_isIncremental = false;
    m_loop.cancel(m_timer);
    if (const auto finished = std::exchange(m_finished, nullptr))
        finished(); // may be the end of this object
}

} // namespace tessary
