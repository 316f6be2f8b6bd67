#pragma once

#include "base/SerialLane.h"
#include "platform/ScreenCapture.h"

namespace tessary {

/// Pictures of the root window, through shared memory where the server is on this machine. Each call makes a
/// connection of its own, so that nothing of ours waits while there are no pictures to take.
class X11ScreenCapture : public ScreenCapture {
public:
    X11ScreenCapture();

    [[nodiscard]] QCoro::Task<QList<ScreenPicture>> pictures() override;

private:
    SerialLane m_lane;
};

} // namespace tessary
