#pragma once

#include "base/SerialLane.h"
#include "platform/Pasteboard.h"
#include "platform/x11/ManagerHandover.h"
#include "platform/x11/OutgoingTransfer.h"
#include "platform/x11/PngOnDemand.h"
#include "platform/x11/ServerTime.h"
#include "platform/x11/X11AsyncCall.h"

#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <vector>

namespace tessary {

/// How patient we are with those who paste.
struct OfferLimits {
    std::chrono::milliseconds patience{10'000};       ///< Per piece of a large transfer.
    std::chrono::milliseconds managerPatience{2'000}; ///< Without progress of a clipboard manager.
    std::chrono::milliseconds managerLongest{6'000};  ///< In all.
};

/// Owns the selections CLIPBOARD and PRIMARY for us and serves what we offer, to any number of requestors at
/// once, on a connection and thread of its own. Files are read on another thread, so that a slow disk holds
/// up nobody else. What is offered is let go of as soon as another program takes the selection.
class SelectionServer {
public:
    using Offer = std::shared_ptr<const ClipboardOffer>;

    /// @param makePng see there; called on the thread.
    /// @throws X11Error when there is no display.
    SelectionServer(const QByteArray& display, const OfferLimits& limits, PngOnDemand::Maker makePng);
    ~SelectionServer();

    // Main thread; to be awaited.

    /// Takes the selections and serves the offer from then on. @returns false when the server refused.
    [[nodiscard]] X11AsyncCall<bool> claim(Offer offer, PasteboardReach reach);
    /// Gives the contents of CLIPBOARD to the session's clipboard manager, when it has one and they are ours.
    /// @returns whether the manager said that it has them.
    [[nodiscard]] X11AsyncCall<bool> handOver();

    /// Any thread. What we offer on CLIPBOARD, when `owner` is our window and `time` that of our claim; else
    /// null. So our own contents need not come back through the server.
    [[nodiscard]] Offer ownOffer(xcb_window_t owner, xcb_timestamp_t time) const;

private:
    struct Held {
        Offer offer;
        xcb_timestamp_t since;
    };
    struct Conversion;
    using Request = xcb_selection_request_event_t;
    using Converted = std::function<void(bool)>;

    void handleEvent(const xcb_generic_event_t& event);
    void connectionLost();
    void take(const Offer& offer, PasteboardReach reach, xcb_timestamp_t time,
              const std::function<void(bool)>& done);
    [[nodiscard]] bool takeSelection(xcb_atom_t selection, const Offer& offer, xcb_timestamp_t time);
    void publish(const Offer& offer, xcb_timestamp_t time);
    void cleared(const xcb_selection_clear_event_t& event);
    void answer(const Request& request);
    [[nodiscard]] const Held* heldAt(xcb_atom_t selection, xcb_timestamp_t time) const;
    void answerMultiple(const Request& request, const Held& held);
    void convert(const Request& request, xcb_atom_t target, xcb_atom_t property, const Held& held,
                 const Converted& converted);
    void send(const Request& request, xcb_atom_t property, const ClipboardOffer::Form& form,
              const Converted& converted);
    [[nodiscard]] std::vector<xcb_atom_t> targetAtoms(const ClipboardOffer& offer);
    [[nodiscard]] std::optional<ClipboardOffer::Form> formOf(const ClipboardOffer& offer, xcb_atom_t target);
    void notify(const Request& request, xcb_atom_t property);
    void transferEnded(const OutgoingTransfer* transfer);
    void setWords(xcb_window_t window, xcb_atom_t property, xcb_atom_t type,
                  const std::vector<uint32_t>& words);

    OfferLimits m_limits;
    mutable std::mutex m_mutex;
    Offer m_ownOffer;                  // under the mutex
    xcb_timestamp_t m_ownTime = 0;     // under the mutex
    std::map<xcb_atom_t, Held> m_held; // the loop's thread, as all below
    std::vector<std::shared_ptr<OutgoingTransfer>> m_transfers;
    X11EventLoop m_loop;
    xcb_window_t m_window;
    ServerTime m_time;
    PngOnDemand m_png;
    ManagerHandover m_handover;
    SerialLane m_reader; // last, as its work uses the loop
};

} // namespace tessary
