#include "ui/kit/EmptyState.h"

#include "ui/kit/Spinner.h"
#include "ui/kit/Symbol.h"
#include "ui/kit/Theme.h"

#include <QPainter>
#include <QTextLayout>

namespace tessary {
namespace {

constexpr int kSymbolSize = 32;
constexpr int kGap = 12;
constexpr int kTitleHeight = 20;
constexpr int kSentenceGap = 4;
constexpr int kSentenceLine = 18;
constexpr int kSidePadding = 32;

void drawCentred(QPainter& painter, const QString& text, const QRect& area, int lineHeight)
{
    QTextLayout layout(text, painter.font());
    QTextOption option(Qt::AlignHCenter);
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout.setTextOption(option);
    layout.beginLayout();
    double y = 0;
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(area.width());
        line.setPosition(QPointF(0, y + (lineHeight - line.height()) / 2));
        y += lineHeight;
    }
    layout.endLayout();
    layout.draw(&painter, area.topLeft());
}

} // namespace

EmptyState::EmptyState(const Theme& theme, QWidget* parent)
    : QWidget(parent),
      m_theme(theme),
      m_spinner(new Spinner(theme, this))
{
    m_spinner->hide();
    connect(&theme, &Theme::changed, this, qOverload<>(&QWidget::update));
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
    return (height() - (kSymbolSize + kGap + kTitleHeight + kSentenceGap + kSentenceLine)) / 2;
}

void EmptyState::resizeEvent(QResizeEvent*)
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
        drawCentred(painter, m_title, area, kTitleHeight);
        area.translate(0, kTitleHeight + kSentenceGap);
    }
    painter.setPen(colours.secondaryText);
    painter.setFont(m_theme.font(Theme::kCaptionSize));
    drawCentred(painter, m_sentence, area, kSentenceLine);
}

} // namespace tessary
