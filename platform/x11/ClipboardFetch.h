#pragma once

#include "platform/x11/ClipboardSnapshot.h"
#include "platform/x11/ClipboardTargets.h"
#include "platform/x11/SelectionTransfer.h"

namespace tessary {

/// Fetches what the clipboard holds right after it changed: asks for the targets, then whether the owner
/// calls the contents secret, then for a PNG, else another bitmap, and text. On the event loop's thread.
class ClipboardFetch {
public:
    /// An empty snapshot when nothing of use could be had. May destroy the fetch.
    using Completion = std::function<void(ClipboardSnapshot)>;

    /// @param time of the change, by the server's clock.
    ClipboardFetch(X11EventLoop& loop, xcb_timestamp_t time, const TransferLimits& limits,
                   Completion completion);

    void handleEvent(const xcb_generic_event_t& event);
    /// The clipboard has another owner now. What the old one has begun to hand over may still come; nothing
    /// else is asked for, since it would come from the new one, whose secrecy nobody has looked at.
    void ownerReplaced();

private:
    using Step = void (ClipboardFetch::*)();
    using Answer = SelectionTransfer::Answer;

    void request(const QByteArray& target, std::function<void(Answer)> then);
    void targetsArrived(const Answer& answer);
    [[nodiscard]] ClipboardTargets targetsIn(const Answer& answer) const;
    /// Tries the targets in turn until one yields bytes, then goes on either way.
    void fetchFirst(QList<QByteArray> targets, std::optional<QByteArray> ClipboardSnapshot::*slot, Step next);
    void fetchImage();
    void fetchBitmapUnlessPng();
    void fetchText();
    void finish();

    X11EventLoop& m_loop;
    xcb_timestamp_t m_time;
    TransferLimits m_limits;
    Completion m_completion;
    ClipboardTargets m_targets;
    ClipboardSnapshot m_snapshot;
    bool m_isReplaced = false;
    std::unique_ptr<SelectionTransfer> m_transfer;
};

} // namespace tessary
