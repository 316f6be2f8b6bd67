#include "ui/kit/Chip.h"

#include "ui/kit/SingleLine.h"
#include "ui/kit/SymbolButton.h"
#include "ui/kit/Theme.h"

#include <QPainter>

namespace tessary {
namespace {

constexpr int kHeight = 24;
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
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setToolTip(text);
    m_remove->setSymbolSize(12);
    m_remove->setExtent(kTarget);
    m_remove->setRestingColour(theme.colours().accentText);
    m_remove->setAccessibleName(tr("移除") + QLatin1Char(' ') + text);
    connect(m_remove, &QAbstractButton::clicked, this, &Chip::removed);
}

QString Chip::shownText() const
{
    return QFontMetrics(m_theme.font(Theme::kCaptionSize)).elidedText(m_text, Qt::ElideRight, kMaximumText);
}

QSize Chip::sizeHint() const
{
    const int text = QFontMetrics(m_theme.font(Theme::kCaptionSize)).horizontalAdvance(shownText());
    return {kLeft + text + kGap + kTarget + kRight, kHeight};
}

void Chip::resizeEvent(QResizeEvent*)
{
    m_remove->setGeometry(width() - kRight - kTarget, (height() - kTarget) / 2, kTarget, kTarget);
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
    drawSingleLine(painter, rect().adjusted(kLeft, 0, -(kRight + kTarget), 0), shownText());
}

} // namespace tessary
