#pragma once

namespace tessary {

struct ScreenshotRecord;

/// The windows, as far as the runtime opens them. Implemented where the windows are; main thread only.
class WindowPresenter {
public:
    virtual ~WindowPresenter() = default;
    [[nodiscard]] virtual bool isQuickSearchVisible() const = 0;
    virtual void showQuickSearch() = 0;
    virtual void hideQuickSearch() = 0;
    virtual void showSettings() = 0;
    /// Shows the item in a window of its own.
    virtual void showPreview(const ScreenshotRecord& record) = 0;
    /// Lets the person drag a region of the screen whose text is to be recognised.
    virtual void showRegionSelection() = 0;
};

} // namespace tessary
