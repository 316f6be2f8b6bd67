#include "ui/preview/NoticeBar.h"

#include "ui/kit/AccessibleRole.h"
#include "ui/kit/SingleLine.h"
#include "ui/kit/Symbol.h"
#include "ui/kit/Theme.h"

#include <QPainter>

namespace tessary {
namespace {

constexpr int kHeight = 36;
constexpr int kSymbolSize = 16;
constexpr int kLeft = 24;
constexpr int kGap = 8;

} // namespace

NoticeBar::NoticeBar(const Theme& theme, QWidget* parent) : QWidget(parent), m_theme(theme)
{
    setAccessibleRole(*this, QAccessible::StaticText);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    connect(&theme, &Theme::changed, this, [this] {
        updateGeometry();
        update();
    });
    hide();
}

void NoticeBar::setText(const QString& text)
{
    m_text = text;
    setAccessibleName(text);
    setToolTip(text);
    setVisible(!text.isEmpty());
    update();
}

QSize NoticeBar::sizeHint() const
{
    return {0, m_theme.scaled(kHeight)};
}

void NoticeBar::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), m_theme.colours().raised);
    painter.fillRect(0, height() - 1, width(), 1, m_theme.colours().hairline);
    const QColor colour = m_theme.colours().secondaryText;
    painter.drawPixmap(kLeft, (height() - kSymbolSize) / 2,
                       Symbol(QStringLiteral("trash")).pixmap(kSymbolSize, colour, devicePixelRatioF()));
    painter.setPen(m_theme.colours().text);
    painter.setFont(m_theme.font(Theme::kBodySize));
    const int left = kLeft + kSymbolSize + kGap;
    const QRect area(left, 0, width() - left - kLeft, height());
    drawSingleLine(painter, area, painter.fontMetrics().elidedText(m_text, Qt::ElideRight, area.width()));
}

} // namespace tessary
