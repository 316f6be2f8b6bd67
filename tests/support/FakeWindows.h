#pragma once

#include "app/WindowPresenter.h"

namespace tessary::testing {

/// Windows that are only counted.
class FakeWindows : public WindowPresenter {
public:
    [[nodiscard]] bool isQuickSearchVisible() const override { return isVisible; }
    void showQuickSearch() override { isVisible = true; }
    void hideQuickSearch() override { isVisible = false; }
    void showSettings() override { ++settingsShown; }
    void showPreview(const ScreenshotRecord&) override { ++previews; }
    void showRegionSelection() override { ++selections; }

    bool isVisible = false;
    int settingsShown = 0;
    int previews = 0;
    int selections = 0;
};

} // namespace tessary::testing
