#pragma once

#include <QString>

namespace tessary {

/// How large the preview shows an item; 1 is as large as it is shown at first.
struct PreviewZoom {
    static constexpr double kStep = 0.2;
    static constexpr double kSmallest = 0.25;
    static constexpr double kLargest = 4.0;
    static constexpr double kReset = 1.0;

    /// One step more or less, within the limits. Free of what binary fractions leave over.
    [[nodiscard]] static double larger(double scale);
    [[nodiscard]] static double smaller(double scale);
    /// Moved by that factor, as fingers do it, within the limits.
    [[nodiscard]] static double moved(double scale, double factor);
    /// "120%".
    [[nodiscard]] static QString percentText(double scale);
};

} // namespace tessary
