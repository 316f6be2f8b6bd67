#pragma once

#include "platform/Platform.h"
#include "store/ScreenshotRecord.h"

#include <chrono>
#include <optional>

/// Puts items of the library back on the clipboard, and pastes them where the person worked before. Main
/// thread; nothing is thrown.
namespace tessary::ClipboardService {

constexpr std::chrono::milliseconds kActivationPollInterval{50};
constexpr int kActivationPolls = 8;
/// Between the program being in front and the keys: it may still be drawing itself.
constexpr std::chrono::milliseconds kSettleDelay{220};

enum class Outcome {
    NotWritten, ///< The clipboard is as it was.
    Written,    ///< On the clipboard, but nothing was pasted.
    Pasted,     ///< The paste keys were sent.
};

/// Writes the item's text, or its picture from the library. @returns false when the clipboard did not take
/// it, or there is no picture in the file any more; the former contents stay then.
[[nodiscard]] QCoro::Task<bool> copy(ScreenshotRecord record, Pasteboard& pasteboard, PasteboardReach reach);

/// Does the same, then brings that program to the front, waits until it is (0.4 s at most), and sends it the
/// keys that paste.
[[nodiscard]] QCoro::Task<Outcome> copyAndPaste(ScreenshotRecord record,
                                                std::optional<RunningApplication> target, Platform platform);

} // namespace tessary::ClipboardService
