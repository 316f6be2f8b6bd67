#pragma once

#include "platform/WindowPicker.h"
#include "platform/testing/NextTurn.h"

namespace tessary::testing {

/// A person who points at what a test says. Answers come after a turn of the event loop.
class FakeWindowPicker : public WindowPicker {
public:
    [[nodiscard]] QCoro::Task<PickedWindow> pick() override
    {
        ++picks;
        const PickedWindow answer = next;
        co_await NextTurn();
        co_return answer;
    }
    void cancel() override { ++cancels; }

    PickedWindow next;
    int picks = 0;
    int cancels = 0;
};

} // namespace tessary::testing
