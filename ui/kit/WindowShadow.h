#pragma once

#include "ui/kit/ThemeColours.h"

#include <QImage>

class QPainter;
class QRect;

namespace tessary {

/// The soft shadow of a window with round corners, drawn from a picture that is kept.
class WindowShadow {
public:
    /// How far it reaches beyond the window, logical pixels.
    static constexpr int kReach = 48;

    /// Around the body, of which it draws nothing.
    void paint(QPainter& painter, const QRect& body, int radius, const ThemeColours& colours,
               qreal devicePixelRatio);

private:
    void render(int radius, const ThemeColours& colours, qreal devicePixelRatio);

    QImage m_corners; // the four corners and one stretchable pixel between them
    int m_radius = 0;
    QColor m_farColour;
    qreal m_devicePixelRatio = 0;
};

} // namespace tessary
