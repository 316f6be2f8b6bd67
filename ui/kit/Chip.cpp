#include "ui/kit/Chip.h"

#include "ui/kit/AccessibleRole.h"
#include "ui/kit/SingleLine.h"
#include "ui/kit/SymbolButton.h"
#include "ui/kit/Theme.h"

#include <QPainter>

namespace tessary {
namespace {

constexpr int kHeight = 24;
constexpr int kLineHeight = 16;
constexpr int kLeft = 8;
constexpr int kRight = 4;
constexpr int kGap = 4;
constexpr int kTarget = 16;
constexpr int kMaximumText = 240; // longer ones are elided

} // namespace

Chip::Chip(const Theme& theme, const QString& text, QWidget* parent)
    : QWidget(parent),
      m_theme(theme),
      m_text(text),
      m_remove(new SymbolButton(theme, QStringLiteral("xmark"), this))
{
    setAccessibleRole(*this, QAccessible::StaticText);
    setAccessibleName(text);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setToolTip(text);
    m_remove->setSymbolSize(12);
    m_remove->setExtent(kTarget);
    m_remove->setAccessibleName(tr("移除") + QLatin1Char(' ') + text);
    connect(m_remove, &QAbstractButton::clicked, this, &Chip::removed);
    connect(&theme, &Theme::changed, this, &Chip::applyTheme);
    applyTheme();
}

void Chip::applyTheme()
{
    m_remove->setRestingColour(m_theme.colours().accentText);
    updateGeometry();
    update();
}

QString Chip::shownText() const
{
    return QFontMetrics(m_theme.font(Theme::kCaptionSize))
        .elidedText(m_text, Qt::ElideRight, m_theme.scaled(kMaximumText));
}

QSize Chip::sizeHint() const
{
    const int text = QFontMetrics(m_theme.font(Theme::kCaptionSize)).horizontalAdvance(shownText());
    const int height = m_theme.fitting(kHeight, kLineHeight);
    return {kLeft + text + kGap + m_remove->sizeHint().width() + kRight, height};
}

void Chip::resizeEvent(QResizeEvent*)
{
    const int side = m_remove->sizeHint().width();
    m_remove->setGeometry(width() - kRight - side, (height() - side) / 2, side, side);
}

void Chip::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(m_theme.colours().accentTint);
    painter.drawRoundedRect(rect(), Theme::kControlRadius, Theme::kControlRadius);
    painter.setPen(m_theme.colours().accentText);
    painter.setFont(m_theme.font(Theme::kCaptionSize));
    drawSingleLine(painter, rect().adjusted(kLeft, 0, -(kRight + m_remove->width()), 0), shownText());
}

} // namespace tessary
