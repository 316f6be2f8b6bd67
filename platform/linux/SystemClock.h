#pragma once

#include "platform/Clock.h"

namespace tessary {

/// The machine's own time.
class SystemClock : public Clock {
public:
    [[nodiscard]] Date now() const override;
    [[nodiscard]] QCoro::Task<> sleep(std::chrono::milliseconds duration) override;
    /// Calls may come up to a twentieth of the interval early or late, so that wake-ups fall together.
    [[nodiscard]] std::unique_ptr<RepeatingTimer> repeat(std::chrono::milliseconds interval,
                                                         std::function<void()> callback) override;
};

} // namespace tessary
