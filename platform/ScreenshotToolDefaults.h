#pragma once

#include <QString>

#include <optional>

namespace tessary {

/// The settings of the desktop's own screenshot tool.
class ScreenshotToolDefaults {
public:
    virtual ~ScreenshotToolDefaults() = default;
    /// The folder where the tool saves its pictures, if one is configured.
    [[nodiscard]] virtual std::optional<QString> location() const = 0;
};

} // namespace tessary
