#include "ui/kit/SegmentedControl.h"

#include "ui/kit/SingleLine.h"
#include "ui/kit/Symbol.h"
#include "ui/kit/Theme.h"

#include <QPainter>
#include <QWheelEvent>

#include <algorithm>

namespace tessary {
namespace {

constexpr int kPadding = 2; // around all segments, and between two
constexpr int kHeight = 28; // of a segment
constexpr int kNarrowest = 96;
constexpr int kSide = 12;
constexpr int kSymbol = 16;
constexpr int kGap = 6;
constexpr int kRadius = 8;

} // namespace

SegmentedControl::SegmentedControl(const Theme& theme, QWidget* parent) : QTabBar(parent), m_theme(theme)
{
    setDrawBase(false);
    setExpanding(false);
    setUsesScrollButtons(false);
    setElideMode(Qt::ElideNone);
    setFocusPolicy(Qt::TabFocus);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setFont(theme.font(Theme::kBodySize));
    connect(&theme, &Theme::changed, this, [this] {
        setFont(m_theme.font(Theme::kBodySize)); // lays the segments out anew
        updateGeometry();
        update();
    });
}

void SegmentedControl::addSegment(const QString& symbol, const QString& text)
{
    setTabData(addTab(text), symbol);
}

QSize SegmentedControl::tabSizeHint(int index) const
{
    const QFontMetrics metrics(m_theme.font(Theme::kBodySize, QFont::Medium));
    const int content = kSide + kSymbol + kGap + metrics.horizontalAdvance(tabText(index)) + kSide;
    int width = std::max(kNarrowest, content) + kPadding;
    // The tabs lie side by side: the first and the last hold the padding at the ends.
    if (index == 0 || index == count() - 1)
        width += kPadding / 2;
    return {width, m_theme.scaled(kHeight) + 2 * kPadding};
}

QRect SegmentedControl::segment(int index) const
{
    const int left = index == 0 ? kPadding : kPadding / 2;
    const int right = index == count() - 1 ? kPadding : kPadding / 2;
    return tabRect(index).adjusted(left, kPadding, -right, -kPadding);
}

void SegmentedControl::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(m_theme.isDark() ? QColor(0x2A, 0x2A, 0x2D) : m_theme.colours().raised);
    painter.drawRoundedRect(rect(), kRadius, kRadius);
    for (int index = 0; index < count(); ++index)
        paintSegment(painter, index);
}

void SegmentedControl::paintSegment(QPainter& painter, int index) const
{
    const ThemeColours& colours = m_theme.colours();
    const bool isChosen = index == currentIndex();
    const QRect area = segment(index);
    if (isChosen) {
        painter.setPen(colours.edge);
        painter.setBrush(m_theme.isDark() ? QColor(0x45, 0x45, 0x4B) : colours.surface);
        painter.drawRoundedRect(QRectF(area).adjusted(0.5, 0.5, -0.5, -0.5), Theme::kControlRadius,
                                Theme::kControlRadius);
    }
    const QFont font = m_theme.font(Theme::kBodySize, isChosen ? QFont::Medium : QFont::Normal);
    const int textWidth = QFontMetrics(font).horizontalAdvance(tabText(index));
    int left = area.left() + (area.width() - kSymbol - kGap - textWidth) / 2;
    painter.drawPixmap(
        left, area.top() + (area.height() - kSymbol) / 2,
        Symbol(tabData(index).toString())
            .pixmap(kSymbol, isChosen ? colours.accentText : colours.secondaryText, devicePixelRatioF()));
    left += kSymbol + kGap;
    painter.setFont(font);
    painter.setPen(isChosen ? colours.text : colours.secondaryText);
    drawSingleLine(painter, QRect(left, area.top(), textWidth, area.height()), tabText(index));
    if (isChosen)
        m_focusRing.paint(painter, m_theme, area, Theme::kControlRadius);
}

/// Turning the wheel over the segments does not switch them.
void SegmentedControl::wheelEvent(QWheelEvent* event)
{
    event->ignore();
}

} // namespace tessary
