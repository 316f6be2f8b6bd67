#pragma once

#include "app/WindowPresenter.h"
#include "recognition/RecognitionResult.h"
#include "tests/support/FakeRegionSelector.h"

namespace tessary::testing {

/// Windows that are only counted.
class FakeWindows : public WindowPresenter {
public:
    [[nodiscard]] bool isQuickSearchVisible() const override { return isVisible; }
    void showQuickSearch() override { isVisible = true; }
    void hideQuickSearch() override { isVisible = false; }
    void showSettings() override { ++settingsShown; }
    void showPreview(const ScreenshotRecord&) override { ++previews; }
    [[nodiscard]] RegionSelector& regionSelector() override { return selector; }
    void showRecognitionResult(const RecognitionResult& result) override { results.append(result); }
    bool withdraw() override
    {
        ++withdrawn;
        return false;
    }
    void restore() override { ++restored; }

    bool isVisible = false;
    int settingsShown = 0;
    int previews = 0;
    int withdrawn = 0;
    int restored = 0;
    FakeRegionSelector selector;
    QList<RecognitionResult> results;
};

} // namespace tessary::testing
