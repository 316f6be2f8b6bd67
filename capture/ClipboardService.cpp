#include "capture/ClipboardService.h"

namespace tessary::ClipboardService {
namespace {

QCoro::Task<std::optional<PasteKeystroke>> keystrokeFor(std::optional<RunningApplication> target,
                                                        KeystrokeSender& keystrokes)
{
    if (!target)
        co_return std::nullopt;
    const std::optional<PasteKeystroke> keystroke = co_await keystrokes.pasteKeystroke(*target);
    co_return keystroke;
}

QCoro::Task<bool> becomesActive(RunningApplication target, Workspace& workspace, Clock& clock)
{
    for (int poll = 0; poll < kActivationPolls; ++poll) {
        const bool isActive = co_await workspace.isActive(target);
        if (isActive)
            co_return true;
        co_await clock.sleep(kActivationPollInterval);
    }
    const bool isActive = co_await workspace.isActive(target);
    co_return isActive;
}

} // namespace

QCoro::Task<bool> copy(ScreenshotRecord record, Pasteboard& pasteboard, PasteboardReach reach)
{
    bool isWritten = false;
    if (record.contentType == ClipboardContentType::Text)
        isWritten = co_await pasteboard.writeText(record.textContent, reach);
    else
        isWritten = co_await pasteboard.writeImage(record.libraryPath, reach);
    co_return isWritten;
}

QCoro::Task<Outcome> copyAndPaste(ScreenshotRecord record, std::optional<RunningApplication> target,
                                  Platform platform)
{
    // Known before the writing, since Shift+Insert may paste something else than the clipboard.
    const std::optional<PasteKeystroke> keystroke = co_await keystrokeFor(target, platform.keystrokes);
    const PasteboardReach reach = keystroke == PasteKeystroke::ShiftInsert
                                      ? PasteboardReach::ClipboardAndSelection
                                      : PasteboardReach::Clipboard;
    const bool isWritten = co_await copy(record, platform.pasteboard, reach);
    if (!isWritten)
        co_return Outcome::NotWritten;
    if (!target)
        co_return Outcome::Written;
    const bool isGranted = co_await platform.workspace.requestActivation(*target);
    if (!isGranted)
        co_return Outcome::Written;
    const bool isActive = co_await becomesActive(*target, platform.workspace, platform.clock);
    if (!isActive)
        co_return Outcome::Written;
    co_await platform.clock.sleep(kSettleDelay);
    if (!keystroke)
        co_return Outcome::Written;
    const bool isSent = co_await platform.keystrokes.send(*keystroke, *target);
    co_return isSent ? Outcome::Pasted : Outcome::Written;
}

} // namespace tessary::ClipboardService
