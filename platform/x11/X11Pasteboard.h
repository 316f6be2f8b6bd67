#pragma once

#include "platform/Pasteboard.h"
#include "platform/x11/ClipboardFetch.h"
#include "platform/x11/ClipboardShelf.h"
#include "platform/x11/SelectionServer.h"

#include <QObject>

#include <map>

#include <xcb/xfixes.h>

namespace tessary {

class ImageCodec;

/// The selection CLIPBOARD, watched and read on a connection and thread of its own, and written on another.
///
/// The contents are fetched the moment their owner changes, so that a program which copies and quits is
/// not lost. An owner that hangs, lies or dies costs its own item, nothing else: each change has its own
/// fetch, and several may be under way.
class X11Pasteboard : public Pasteboard {
public:
    struct Limits {
        TransferLimits reading = {};
        OfferLimits writing = {};
    };

    /// @param imageCodec makes a PNG of a written picture that is none; outlives this.
    /// @throws X11Error when there is no display or it lacks the selection events.
    explicit X11Pasteboard(ImageCodec& imageCodec, const QByteArray& display = {},
                           const Limits& limits = defaultLimits());
    ~X11Pasteboard() override;

    [[nodiscard]] Support support() const override { return {}; }
    [[nodiscard]] qint64 changeCount() const override;
    [[nodiscard]] QCoro::Task<std::optional<QByteArray>> data(qint64 changeCount,
                                                              PasteboardType type) override;
    void setFetching(bool isFetching) override { m_isFetching = isFetching; }
    void release(qint64 changeCount) override;
    [[nodiscard]] QCoro::Task<bool> writeText(QString text, PasteboardReach reach) override;
    [[nodiscard]] QCoro::Task<bool> writeImage(QString path, PasteboardReach reach) override;
    [[nodiscard]] QCoro::Task<> handOver() override;

private:
    static Limits defaultLimits() { return {}; }
    void makePng(const PngOnDemand::Picture& picture, std::function<void(QByteArray)> done);
    QCoro::Task<QByteArray> pngOf(PngOnDemand::Picture picture);
    void watchOwner();
    void handleEvent(const xcb_generic_event_t& event);
    void ownerChanged(const xcb_xfixes_selection_notify_event_t& notify);
    void dropUnwanted();

    ImageCodec& m_imageCodec;
    mutable ClipboardShelf m_shelf;
    TransferLimits m_limits;
    std::map<qint64, std::unique_ptr<ClipboardFetch>> m_fetches; // the loop's thread only
    uint8_t m_ownerEvent = 0;
    std::atomic<bool> m_isFetching = false;
    SerialLane m_lane; // for files and long texts
    QObject m_context; // what is on its way to the main thread after us is dropped
    SelectionServer m_server;
    X11EventLoop m_loop;
};

} // namespace tessary
