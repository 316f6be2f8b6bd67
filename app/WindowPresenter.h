#pragma once

#include "recognition/OwnWindows.h"

namespace tessary {

class RegionSelector;
struct RecognitionResult;
struct ScreenshotRecord;

/// The windows, as far as the runtime opens them. Implemented where the windows are; main thread only.
class WindowPresenter : public OwnWindows {
public:
    [[nodiscard]] virtual bool isQuickSearchVisible() const = 0;
    virtual void showQuickSearch() = 0;
    virtual void hideQuickSearch() = 0;
    virtual void showSettings() = 0;
    /// Shows the item in a window of its own.
    virtual void showPreview(const ScreenshotRecord& record) = 0;
    /// What lets the person drag a region of the screen; there as long as the windows are.
    [[nodiscard]] virtual RegionSelector& regionSelector() = 0;
    /// Shows what was recognised, in place of what was before.
    virtual void showRecognitionResult(const RecognitionResult& result) = 0;
};

} // namespace tessary
