#pragma once

#include "platform/ScreenshotToolDefaults.h"

namespace tessary::testing {

/// A screenshot tool that a test configures; unconfigured at first.
class FakeScreenshotToolDefaults : public ScreenshotToolDefaults {
public:
    [[nodiscard]] std::optional<QString> location() const override { return m_location; }

    void setLocation(std::optional<QString> folder) { m_location = std::move(folder); }

private:
    std::optional<QString> m_location;
};

} // namespace tessary::testing
