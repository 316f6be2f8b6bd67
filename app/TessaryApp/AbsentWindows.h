#pragma once

#include "app/WindowPresenter.h"

namespace tessary {

/// Stands in for the windows while there are none: says in the log which one was asked for.
class AbsentWindows : public WindowPresenter {
public:
    [[nodiscard]] bool isQuickSearchVisible() const override { return false; }
    void showQuickSearch() override;
    void hideQuickSearch() override {}
    void showSettings() override;
    void showPreview(const ScreenshotRecord& record) override;
    void showRegionSelection() override;
};

} // namespace tessary
