#pragma once

#include "platform/Pasteboard.h"
#include "platform/x11/ClipboardFetch.h"
#include "platform/x11/ClipboardShelf.h"

#include <map>

namespace tessary {

/// The selection CLIPBOARD, watched and read on a connection and thread of its own.
///
/// The contents are fetched the moment their owner changes, so that a program which copies and quits is
/// not lost. An owner that hangs, lies or dies costs its own item, nothing else: each change has its own
/// fetch, and several may be under way.
class X11Pasteboard : public Pasteboard {
public:
    /// @throws X11Error when there is no display or it lacks the selection events.
    explicit X11Pasteboard(const QByteArray& display = {}, const TransferLimits& limits = {});
    ~X11Pasteboard() override;

    [[nodiscard]] Support support() const override { return {}; }
    [[nodiscard]] qint64 changeCount() const override;
    [[nodiscard]] QCoro::Task<std::optional<QByteArray>> data(qint64 changeCount,
                                                              PasteboardType type) override;
    void setFetching(bool isFetching) override { m_isFetching = isFetching; }
    void release(qint64 changeCount) override;

private:
    void watchOwner();
    void handleEvent(const xcb_generic_event_t& event);
    void ownerChanged(xcb_timestamp_t time);
    void dropUnwanted();

    mutable ClipboardShelf m_shelf;
    TransferLimits m_limits;
    std::map<qint64, std::unique_ptr<ClipboardFetch>> m_fetches; // the loop's thread only
    uint8_t m_ownerEvent = 0;
    std::atomic<bool> m_isFetching = false;
    X11EventLoop m_loop;
};

} // namespace tessary
