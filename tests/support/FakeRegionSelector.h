#pragma once

#include "platform/testing/FakeImageCodec.h"
#include "recognition/RegionSelector.h"

namespace tessary::testing {

/// A person who always drags the same rectangle, once `gate` is open.
class FakeRegionSelector : public RegionSelector {
public:
    Selection selection;
    std::optional<SelectionError::Case> failure;
    Gate gate;
    int begun = 0;
    QList<ScreenPicture> pictures; ///< What was shown last.

    QCoro::Task<Selection> begin(QList<ScreenPicture> shown) override
    {
        ++begun;
        pictures = shown;
        co_await NextTurn();
        co_await gate.passed();
        if (failure)
            throw SelectionError(*failure);
        const Selection dragged = selection; // a copy: g++ 12 moves members out
        co_return dragged;
    }
    void cancel() override
    {
        failure = SelectionError::Case::Cancelled;
        gate.open();
    }
};

} // namespace tessary::testing
