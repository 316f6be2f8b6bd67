#pragma once

#include <QProxyStyle>
#include <QStyleOptionMenuItem>

namespace tessary {

class Theme;

/// Draws our menus: a tick column, symbols, headings, rounded rows.
class MenuStyle : public QProxyStyle {
    Q_OBJECT
public:
    explicit MenuStyle(const Theme& theme);

    int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override;
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* data) const override;
    QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                           const QWidget* widget) const override;
    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;

private:
    void drawItem(const QStyleOptionMenuItem& item, QPainter& painter, qreal devicePixelRatio) const;

    const Theme& m_theme;
};

} // namespace tessary
