#pragma once

#include "base/SerialLane.h"
#include "platform/Clock.h"
#include "platform/ImageCodec.h"
#include "platform/Pasteboard.h"
#include "store/ScreenshotRecord.h"

#include <functional>
#include <memory>

namespace tessary {

class FlowSet;

/// Watches the clipboard by polling its change count and hands each new image or text to one handler.
/// Main thread only.
class ClipboardMonitor {
public:
    /// @param flows keeps the reading of a change, which may take a while, until it has ended.
    ClipboardMonitor(Pasteboard& pasteboard, Clock& clock, ImageCodec& imageCodec, FlowSet& flows);

    /// Receives new content; must return quickly. Without one, changes are merely passed over.
    std::function<void(ClipboardPayload)> handler;

    /// (Re)starts polling every 0.45 s. What is on the clipboard now is never captured.
    void start();
    /// Ends polling; a change already being read is still delivered.
    void stop();
    [[nodiscard]] bool isRunning() const { return m_timer != nullptr; }

private:
    void poll();
    QCoro::Task<> read(qint64 changeCount);
    QCoro::Task<QString> trimmedText(QByteArray utf8);
    QCoro::Task<std::optional<QByteArray>> imageData(qint64 changeCount);

    Pasteboard& m_pasteboard;
    Clock& m_clock;
    ImageCodec& m_imageCodec;
    FlowSet& m_flows;
    std::unique_ptr<RepeatingTimer> m_timer;
    qint64 m_lastChangeCount = 0;
    SerialLane m_lane;
};

} // namespace tessary
