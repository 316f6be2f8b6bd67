#include "ui/kit/EmptyState.h"

#include "ui/kit/AccessibleRole.h"
#include "ui/kit/Spinner.h"
#include "ui/kit/Symbol.h"
#include "ui/kit/Theme.h"

#include <QPainter>
#include <QTextLayout>

#include <algorithm>

namespace tessary {
namespace {

constexpr int kSymbolSize = 32;
constexpr int kGap = 12;
constexpr int kTitleHeight = 20;
constexpr int kSentenceGap = 4;
constexpr int kSentenceLine = 18;
constexpr int kSidePadding = 32;

/// @returns how high the text is.
int drawCentred(QPainter& painter, const QString& text, const QRect& area, int lineHeight)
{
    QTextLayout layout(text, painter.font());
    QTextOption option(Qt::AlignHCenter);
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout.setTextOption(option);
    layout.beginLayout();
    int y = 0;
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(area.width());
        line.setPosition(QPointF(0, y + (lineHeight - line.height()) / 2));
        y += lineHeight;
    }
    layout.endLayout();
    layout.draw(&painter, area.topLeft());
    return y;
}

} // namespace

EmptyState::EmptyState(const Theme& theme, QWidget* parent)
    : QWidget(parent),
      m_theme(theme),
      m_spinner(new Spinner(theme, this))
{
    setAccessibleRole(*this, QAccessible::StaticText);
    m_spinner->hide();
    connect(&theme, &Theme::changed, this, [this] {
        placeSpinner();
        update();
    });
}

void EmptyState::set(const QString& symbol, const QString& title, const QString& sentence)
{
    if (m_symbol == symbol && m_title == title && m_sentence == sentence)
        return;
    m_symbol = symbol;
    m_title = title;
    m_sentence = sentence;
    m_spinner->setVisible(symbol.isEmpty());
    setAccessibleName(title.isEmpty() ? sentence : title);
    setAccessibleDescription(title.isEmpty() ? QString() : sentence);
    update();
}

int EmptyState::top() const
{
    const int text = m_theme.scaled(kTitleHeight) + kSentenceGap + m_theme.scaled(kSentenceLine);
    return std::max(0, (height() - (kSymbolSize + kGap + text)) / 2);
}

void EmptyState::resizeEvent(QResizeEvent*)
{
    placeSpinner();
}

void EmptyState::placeSpinner()
{
    m_spinner->move((width() - m_spinner->width()) / 2, top());
}

void EmptyState::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const ThemeColours& colours = m_theme.colours();
    if (!m_symbol.isEmpty())
        painter.drawPixmap((width() - kSymbolSize) / 2, top(),
                           Symbol(m_symbol).pixmap(kSymbolSize, colours.tertiary, devicePixelRatioF()));
    QRect area(kSidePadding, top() + kSymbolSize + kGap, width() - 2 * kSidePadding, kTitleHeight);
    if (!m_title.isEmpty()) {
        painter.setPen(colours.text);
        painter.setFont(m_theme.font(Theme::kBodySize, QFont::DemiBold));
        const int height = drawCentred(painter, m_title, area, m_theme.scaled(kTitleHeight));
        area.translate(0, height + kSentenceGap);
    }
    painter.setPen(colours.secondaryText);
    painter.setFont(m_theme.font(Theme::kCaptionSize));
    drawCentred(painter, m_sentence, area, m_theme.scaled(kSentenceLine));
}

} // namespace tessary
