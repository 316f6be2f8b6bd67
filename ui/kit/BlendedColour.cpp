#include "ui/kit/BlendedColour.h"

namespace tessary {

QColor blended(const QColor& from, const QColor& to, double share)
{
    const auto channel = [share](float a, float b) { return a + (b - a) * static_cast<float>(share); };
    return QColor::fromRgbF(channel(from.redF(), to.redF()), channel(from.greenF(), to.greenF()),
                            channel(from.blueF(), to.blueF()), channel(from.alphaF(), to.alphaF()));
}

QColor transparent(QColor colour)
{
    colour.setAlpha(0);
    return colour;
}

} // namespace tessary
