#pragma once

#include "base/SerialLane.h"
#include "platform/x11/ClipboardOffer.h"
#include "platform/x11/X11EventLoop.h"

#include <functional>
#include <memory>

namespace tessary {

/// Hands over contents to one property of one requestor: at once when they fit into a request, else piece by
/// piece as the requestor takes them. On the event loop's thread only; files are read on a lane.
class OutgoingTransfer : public std::enable_shared_from_this<OutgoingTransfer> {
public:
    struct Destination {
        xcb_window_t requestor = XCB_WINDOW_NONE;
        xcb_atom_t property = XCB_ATOM_NONE;
        xcb_atom_t type = XCB_ATOM_NONE;
    };
    struct Callbacks {
        /// Once: whether the requestor can be told that the property is there.
        std::function<void(bool)> placed;
        std::function<void()> progressed;
    };

    /// @param patience how long the requestor may take for one piece.
    OutgoingTransfer(X11EventLoop& loop, SerialLane& reader, Destination destination, OfferedBytes bytes,
                     std::chrono::milliseconds patience, Callbacks callbacks);
    ~OutgoingTransfer();
    OutgoingTransfer(const OutgoingTransfer&) = delete;
    OutgoingTransfer& operator=(const OutgoingTransfer&) = delete;

    /// Called last: nothing more will be written. May let go of the transfer. To be set before the start.
    void onFinished(std::function<void()> finished) { m_finished = std::move(finished); }
    void start();
    /// Every event of the connection; others' are ignored.
    void handleEvent(const xcb_generic_event_t& event);
    [[nodiscard]] xcb_window_t requestor() const { return m_destination.requestor; }

private:
    void announce();
    void sendNext();
    void send(const QByteArray& piece, qint64 expected);
    void read(qint64 length);
    void place(bool isPlaced);
    void expectProgress();
    void finish();

    X11EventLoop& m_loop;
    SerialLane& m_reader;
    Destination m_destination;
    OfferedBytes m_bytes;
    std::chrono::milliseconds m_patience;
    Callbacks m_callbacks;
    std::function<void()> m_finished;
    qint64 m_pieceSize;
    qint64 m_sent = 0;
    bool m_isIncremental = false;
    bool m_isReading = false;
    X11EventLoop::TimerId m_timer = 0;
};

} // namespace tessary
