#include "platform/x11/X11Pasteboard.h"

#include "platform/ImageCodec.h"
#include "platform/x11/XcbReply.h"

namespace tessary {

X11Pasteboard::X11Pasteboard(ImageCodec& imageCodec, const QByteArray& display, const Limits& limits)
    : m_imageCodec(imageCodec),
      m_limits(limits.reading),
      m_lane(QStringLiteral("tessary.pasting")),
      m_server(display, limits.writing,
               [this](const PngOnDemand::Picture& picture, const std::function<void(QByteArray)>& done) {
                   makePng(picture, done);
               }),
      m_loop("tessary.clip", display)
{
    m_loop.atoms().prefetch({"CLIPBOARD", "TARGETS", "INCR", "TESSARY_TRANSFER", "UTF8_STRING"});
    for (const QByteArray& name : ClipboardTargets::knownNames())
        (void)m_loop.atoms().atom(name);
    watchOwner();
    m_loop.addHandler([this](const xcb_generic_event_t& event) { handleEvent(event); });
    m_loop.setConnectionLostHandler([this] { m_shelf.close(); });
    m_loop.start();
}

X11Pasteboard::~X11Pasteboard()
{
    m_loop.post([this] {
        m_fetches.clear();
        m_shelf.close();
    });
    m_loop.stop();
}

void X11Pasteboard::watchOwner()
{
    xcb_connection_t* connection = m_loop.connection();
    const xcb_query_extension_reply_t* extension = xcb_get_extension_data(connection, &xcb_xfixes_id);
    if (extension == nullptr || extension->present == 0)
        throw X11Error(X11Error::Case::MissingExtension, QStringLiteral("XFIXES"));
    m_ownerEvent = static_cast<uint8_t>(extension->first_event + XCB_XFIXES_SELECTION_NOTIFY);
    const XcbReply<xcb_xfixes_query_version_reply_t> version(xcb_xfixes_query_version_reply(
        connection, xcb_xfixes_query_version(connection, XCB_XFIXES_MAJOR_VERSION, XCB_XFIXES_MINOR_VERSION),
        nullptr));
    // Owners that just go away are not watched: what they had offered was copied all the same.
    xcb_xfixes_select_selection_input(connection, m_loop.root(), m_loop.atoms().atom("CLIPBOARD"),
                                      XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER);
}

qint64 X11Pasteboard::changeCount() const
{
    return m_shelf.look();
}

QCoro::Task<std::optional<QByteArray>> X11Pasteboard::data(qint64 changeCount, PasteboardType type)
{
    ClipboardShelf::Arrival arrival = m_shelf.arrival(changeCount);
    co_await arrival;
    co_return m_shelf.contents(changeCount, type);
}

void X11Pasteboard::release(qint64 changeCount)
{
    m_shelf.release(changeCount);
}

QCoro::Task<bool> X11Pasteboard::writeText(QString text, PasteboardReach reach)
{
    auto encoding = m_lane.post([text] { return ClipboardOffer::text(text.toUtf8()); });
    const SelectionServer::Offer offer = co_await encoding;
    const bool isOurs = co_await m_server.claim(offer, reach);
    co_return isOurs;
}

QCoro::Task<bool> X11Pasteboard::writeImage(QString path, PasteboardReach reach)
{
    auto opening = m_lane.post([path] { return PictureFile::open(path); });
    const std::shared_ptr<const PictureFile> picture = co_await opening;
    if (!picture)
        co_return false;
    try {
        co_await m_imageCodec.pixelSize(path);
    } catch (const ImageError&) {
        co_return false;
    }
    const bool isOurs = co_await m_server.claim(ClipboardOffer::image(picture), reach);
    co_return isOurs;
}

QCoro::Task<> X11Pasteboard::handOver()
{
    co_await m_server.handOver();
}

/// On the server's thread.
void X11Pasteboard::makePng(const PngOnDemand::Picture& picture, std::function<void(QByteArray)> done)
{
    const auto make = [this, picture, done = std::move(done)] {
        QCoro::connect(pngOf(picture), &m_context, done);
    };
    QMetaObject::invokeMethod(&m_context, make, Qt::QueuedConnection);
}

QCoro::Task<QByteArray> X11Pasteboard::pngOf(PngOnDemand::Picture picture)
{
    ImageCodec& codec = m_imageCodec; // outlives us
    auto reading = m_lane.post([picture] { return picture->read(0, picture->size()); });
    const QByteArray bytes = co_await reading;
    QByteArray png;
    try {
        png = co_await codec.pngFromBitmap(bytes);
    } catch (const ImageError&) {
        png.clear(); // the requestor is told that there is none
    }
    co_return png;
}

void X11Pasteboard::handleEvent(const xcb_generic_event_t& event)
{
    constexpr uint8_t kSentFlag = 0x80;
    if ((event.response_type & ~kSentFlag) == m_ownerEvent) {
        const auto& notify = reinterpret_cast<const xcb_xfixes_selection_notify_event_t&>(event);
        if (notify.owner != XCB_WINDOW_NONE)
            ownerChanged(notify);
        return;
    }
    // By key: an event may end a fetch, and with it its place in the map.
    std::vector<qint64> counts;
    for (const auto& [count, fetch] : m_fetches)
        counts.push_back(count);
    for (const qint64 count : counts) {
        if (const auto found = m_fetches.find(count); found != m_fetches.end())
            found->second->handleEvent(event);
    }
}

void X11Pasteboard::ownerChanged(const xcb_xfixes_selection_notify_event_t& notify)
{
    for (const auto& [count, fetch] : m_fetches)
        fetch->ownerReplaced();
    const qint64 count = m_shelf.announce();
    dropUnwanted();
    if (!m_isFetching)
        return m_shelf.put(count, {});
    // Our own text need not travel; a picture comes from its file, piece by piece, as to anybody else.
    const SelectionServer::Offer own = m_server.ownOffer(notify.owner, notify.selection_timestamp);
    if (own && own->utf8())
        return m_shelf.put(count, {std::nullopt, std::nullopt, own->utf8()});
    m_fetches[count] = std::make_unique<ClipboardFetch>(
        m_loop, notify.timestamp, m_limits, [this, count](ClipboardSnapshot snapshot) {
            m_shelf.put(count, std::move(snapshot));
            // Not at once: the fetch is still running the code that called us.
            m_loop.post([this, count] { m_fetches.erase(count); });
        });
}

void X11Pasteboard::dropUnwanted()
{
    std::erase_if(m_fetches, [this](const auto& entry) { return !m_shelf.isWanted(entry.first); });
}

} // namespace tessary
