#pragma once

#include "platform/ScreenCapture.h"
#include "platform/testing/FakeImageCodec.h"

namespace tessary::testing {

/// Screens that show what a test has painted. Answers through the event loop.
class FakeScreenCapture : public ScreenCapture {
public:
    QList<ScreenPicture> screens;
    std::optional<ScreenCaptureError::Case> failure;
    Gate gate;
    int taken = 0;

    QCoro::Task<QList<ScreenPicture>> pictures() override
    {
        ++taken;
        co_await NextTurn();
        co_await gate.passed();
        if (failure)
            throw ScreenCaptureError(*failure);
        const QList<ScreenPicture> shown = screens; // a copy: g++ 12 moves members out
        co_return shown;
    }
};

} // namespace tessary::testing
