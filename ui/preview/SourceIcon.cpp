#include "ui/preview/SourceIcon.h"

#include "ui/kit/Symbol.h"
#include "ui/kit/Theme.h"

#include <QPainter>

namespace tessary {

SourceIcon::SourceIcon(const Theme& theme, TileImages& tiles, QWidget* parent)
    : QWidget(parent),
      m_theme(theme),
      m_tiles(tiles)
{
    setFixedSize(kSide, kSide);
    connect(&tiles, &TileImages::arrived, this, qOverload<>(&QWidget::update));
    connect(&theme, &Theme::changed, this, qOverload<>(&QWidget::update));
}

void SourceIcon::setPath(const QString& path)
{
    m_path = path;
    update();
}

void SourceIcon::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const QPixmap icon = m_tiles.tile(m_path, kSide, TileImages::Fit::Whole, devicePixelRatioF());
    if (!icon.isNull())
        return painter.drawPixmap(0, 0, icon);
    constexpr int kSymbolSize = 20;
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(m_theme.colours().raised);
    painter.drawRoundedRect(rect(), Theme::kRowRadius, Theme::kRowRadius);
    painter.drawPixmap((kSide - kSymbolSize) / 2, (kSide - kSymbolSize) / 2,
                       Symbol(QStringLiteral("app.dashed"))
                           .pixmap(kSymbolSize, m_theme.colours().tertiary, devicePixelRatioF()));
}

} // namespace tessary
