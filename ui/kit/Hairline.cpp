#include "ui/kit/Hairline.h"

#include "ui/kit/Theme.h"

#include <QPainter>

namespace tessary {

Hairline::Hairline(const Theme& theme, Qt::Orientation orientation, QWidget* parent)
    : QWidget(parent),
      m_theme(theme)
{
    if (orientation == Qt::Horizontal)
        setFixedHeight(1);
    else
        setFixedWidth(1);
    connect(&theme, &Theme::changed, this, qOverload<>(&QWidget::update));
}

void Hairline::paintEvent(QPaintEvent*)
{
    QPainter(this).fillRect(rect(), m_theme.colours().hairline);
}

} // namespace tessary
