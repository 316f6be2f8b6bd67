#pragma once

#include "platform/x11/X11EventLoop.h"

#include <QByteArray>

#include <optional>

namespace tessary {

/// The limits of one transfer.
struct TransferLimits {
    std::chrono::milliseconds patience{2000};   ///< Without any progress.
    std::chrono::milliseconds longest{120'000}; ///< In all.
    qint64 mostBytes = 512LL * 1024 * 1024;
};

/// One conversion of the clipboard into one target, incremental or not. On the event loop's thread only.
///
/// Each has a window of its own, so that late answers to a transfer that was given up reach nobody.
class SelectionTransfer {
public:
    struct Answer {
        enum class Kind {
            Arrived,
            Refused, ///< The owner, or the server for an owner that is gone, said no.
            Failed,  ///< The owner hung, lied, died on the way or offered too much.
        };
        Kind kind = Kind::Failed;
        QByteArray bytes; ///< Empty unless arrived.
        xcb_atom_t type = XCB_ATOM_NONE;
        int format = 0; ///< Bits of an element: 8, 16 or 32.
    };
    /// Called once. May destroy the transfer.
    using Completion = std::function<void(Answer)>;

    SelectionTransfer(X11EventLoop& loop, xcb_atom_t selection, const QByteArray& target,
                      xcb_timestamp_t time, const TransferLimits& limits, Completion completion);
    ~SelectionTransfer();
    SelectionTransfer(const SelectionTransfer&) = delete;
    SelectionTransfer& operator=(const SelectionTransfer&) = delete;

    /// Every event of the connection; others' are ignored.
    void handleEvent(const xcb_generic_event_t& event);
    /// Whether the owner has begun to hand over; until then another owner's answer could be taken for its.
    [[nodiscard]] bool isAnswered() const { return m_reading == Reading::Increments; }

private:
    enum class Reading { Whole, Increments };
    struct Piece {
        xcb_atom_t type = XCB_ATOM_NONE;
        int format = 0;
        QByteArray bytes;
    };

    void answered(const xcb_selection_notify_event_t& event);
    void increment();
    [[nodiscard]] std::optional<Piece> readProperty(qint64 most);
    [[nodiscard]] bool announcesTooMuch(const Piece& piece) const;
    void noteProgress();
    void fail() { finish({}); }
    void finish(Answer answer);

    X11EventLoop& m_loop;
    xcb_window_t m_window;
    xcb_atom_t m_property;
    xcb_atom_t m_incremental;
    TransferLimits m_limits;
    Completion m_completion;
    Reading m_reading = Reading::Whole;
    Answer m_answer;
    X11EventLoop::TimePoint m_end;
    X11EventLoop::TimerId m_timer;
};

} // namespace tessary
