#pragma once

#include "platform/DesktopAppearance.h"

namespace tessary::testing {

/// A desktop whose look a test changes, and which tells of it in the next turn of the event loop.
class FakeDesktopAppearance : public DesktopAppearance {
    Q_OBJECT
public:
    struct Look {
        ColourScheme colourScheme = ColourScheme::Unknown;
        std::optional<QColor> accentColour;
        bool reducedMotion = false;
        double textScale = 1;
    };

    using DesktopAppearance::DesktopAppearance;

    [[nodiscard]] ColourScheme colourScheme() const override { return m_look.colourScheme; }
    [[nodiscard]] std::optional<QColor> accentColour() const override { return m_look.accentColour; }
    [[nodiscard]] bool reducedMotion() const override { return m_look.reducedMotion; }
    [[nodiscard]] double textScale() const override { return m_look.textScale; }

    void setLook(const Look& look)
    {
        const auto tell = [this, look] {
            m_look = look;
            Q_EMIT changed();
        };
        QMetaObject::invokeMethod(this, tell, Qt::QueuedConnection);
    }

private:
    Look m_look;
};

} // namespace tessary::testing
