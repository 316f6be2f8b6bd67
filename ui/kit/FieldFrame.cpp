#include "ui/kit/FieldFrame.h"

#include "ui/kit/Theme.h"

#include <QPainter>

namespace tessary {

void FieldFrame::paint(QPainter& painter, const Theme& theme, const QRect& area, bool hasFocus)
{
    const ThemeColours& colours = theme.colours();
    const double width = hasFocus ? 2 : 1;
    const double inset = width / 2;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(hasFocus ? colours.accentText : colours.edge, width));
    painter.setBrush(colours.window);
    painter.drawRoundedRect(QRectF(area).adjusted(inset, inset, -inset, -inset), Theme::kControlRadius,
                            Theme::kControlRadius);
    painter.restore();
}

} // namespace tessary
