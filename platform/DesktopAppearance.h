#pragma once

#include <QColor>
#include <QObject>

#include <optional>

namespace tessary {

/// How the desktop wants its programs to look. Main thread only; never blocks: what is not known yet is
/// told with `changed` once it is.
class DesktopAppearance : public QObject {
    Q_OBJECT
public:
    enum class ColourScheme {
        Unknown, ///< The desktop has no preference, or nobody could be asked.
        Light,
        Dark
    };

    using QObject::QObject;

    [[nodiscard]] virtual ColourScheme colourScheme() const = 0;
    /// The person's accent colour, opaque; absent when the desktop has none.
    [[nodiscard]] virtual std::optional<QColor> accentColour() const = 0;
    /// Whether nothing should move.
    [[nodiscard]] virtual bool reducedMotion() const = 0;
    /// By how much text is to be larger than usual, from 0.5 to 3. Where the desktop also says so through
    /// the screen's resolution, Qt has scaled everything by it already.
    [[nodiscard]] virtual double textScale() const = 0;

Q_SIGNALS:
    /// Any of the above is different from before.
    void changed();
};

} // namespace tessary
