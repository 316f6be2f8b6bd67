#pragma once

#include "base/ExpendableLane.h"
#include "store/ScreenshotRecord.h"

#include <qcoro/qcorotask.h>

#include <stop_token>

namespace tessary {

/// Writes items to wherever the person wants them, even to a folder that hangs. Main thread only.
class ItemExporter {
public:
    enum class IfTaken { LeaveIt, ReplaceIt };

    ItemExporter();

    /// Whether there is something at that path already.
    [[nodiscard]] QCoro::Task<bool> isTaken(QString path);
    /// Writes a picture's own bytes, or a text as UTF-8, in place of what is there. The file is whole or not
    /// there at all. @throws FileError, Abandoned.
    [[nodiscard]] QCoro::Task<> write(ScreenshotRecord record, QString path);
    /// Ends what is under way, with Abandoned; the writing itself may go on.
    void giveUp() { m_stop.request_stop(); }

private:
    std::stop_source m_stop;
    ExpendableLane m_lane;
};

} // namespace tessary
