#include "ui/kit/SymbolView.h"

#include "ui/kit/Symbol.h"
#include "ui/kit/Theme.h"

#include <QPainter>

namespace tessary {

SymbolView::SymbolView(const Theme& theme, QString symbol, int size, QColor ThemeColours::*colour,
                       QWidget* parent)
    : QWidget(parent),
      m_theme(theme),
      m_symbol(std::move(symbol)),
      m_size(size),
      m_colour(colour)
{
    setFixedSize(size, size);
    connect(&theme, &Theme::changed, this, qOverload<>(&QWidget::update));
}

void SymbolView::setSymbol(const QString& symbol, QColor ThemeColours::*colour)
{
    m_symbol = symbol;
    m_colour = colour;
    update();
}

void SymbolView::setPicture(const QImage& picture)
{
    m_picture = picture;
    update();
}

void SymbolView::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    if (m_picture.isNull()) {
        painter.drawPixmap(0, 0,
                           Symbol(m_symbol).pixmap(m_size, m_theme.colours().*m_colour, devicePixelRatioF()));
        return;
    }
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(rect(), m_picture);
}

} // namespace tessary
