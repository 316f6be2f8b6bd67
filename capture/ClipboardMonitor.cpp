#include "capture/ClipboardMonitor.h"

#include "base/FlowSet.h"

namespace tessary {
namespace {

using namespace std::chrono_literals;

constexpr auto kPollInterval = 450ms;
constexpr qsizetype kQuicklyTrimmed = 256 * 1024; // bytes that the main thread deals with in under 1 ms

QString trimmed(const QByteArray& utf8)
{
    return QString::fromUtf8(utf8).trimmed();
}

} // namespace

ClipboardMonitor::ClipboardMonitor(Pasteboard& pasteboard, Clock& clock, ImageCodec& imageCodec,
                                   FlowSet& flows)
    : m_pasteboard(pasteboard),
      m_clock(clock),
      m_imageCodec(imageCodec),
      m_flows(flows),
      m_lane(QStringLiteral("tessary.text"))
{
}

void ClipboardMonitor::start()
{
    m_timer.reset();
    m_pasteboard.setFetching(true);
    m_lastChangeCount = m_pasteboard.changeCount();
    m_pasteboard.release(m_lastChangeCount);
    m_timer = m_clock.repeat(kPollInterval, [this] { poll(); });
}

void ClipboardMonitor::stop()
{
    m_timer.reset();
    m_pasteboard.setFetching(false);
}

void ClipboardMonitor::poll()
{
    const qint64 changeCount = m_pasteboard.changeCount();
    if (changeCount == m_lastChangeCount)
        return;
    m_lastChangeCount = changeCount; // first, so that a change is looked at once, whatever follows
    m_flows.add(read(changeCount));
}

QCoro::Task<> ClipboardMonitor::read(qint64 changeCount)
{
    std::optional<QByteArray> image = co_await imageData(changeCount);
    if (image) {
        m_pasteboard.release(changeCount);
        if (handler)
            handler(ClipboardPayload(std::move(*image)));
        co_return;
    }
    const std::optional<QByteArray> utf8 = co_await m_pasteboard.data(changeCount, PasteboardType::Text);
    m_pasteboard.release(changeCount);
    if (!utf8)
        co_return;
    const QString text = co_await trimmedText(*utf8);
    if (!text.isEmpty() && handler)
        handler(ClipboardPayload(text));
}

QCoro::Task<QString> ClipboardMonitor::trimmedText(QByteArray utf8)
{
    if (utf8.size() <= kQuicklyTrimmed)
        co_return trimmed(utf8);
    auto trimming = m_lane.post([utf8] { return trimmed(utf8); });
    co_return co_await trimming;
}

QCoro::Task<std::optional<QByteArray>> ClipboardMonitor::imageData(qint64 changeCount)
{
    std::optional<QByteArray> png = co_await m_pasteboard.data(changeCount, PasteboardType::Png);
    if (png)
        co_return png;
    const std::optional<QByteArray> bitmap = co_await m_pasteboard.data(changeCount, PasteboardType::Bitmap);
    if (!bitmap)
        co_return std::nullopt;
    std::optional<QByteArray> encoded;
    try {
        encoded = co_await m_imageCodec.pngFromBitmap(*bitmap);
    } catch (const ImageError&) {
        encoded.reset(); // then there may still be a text
    }
    co_return encoded;
}

} // namespace tessary
