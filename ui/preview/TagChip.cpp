#include "ui/preview/TagChip.h"

#include "ui/kit/AccessibleRole.h"
#include "ui/kit/SingleLine.h"
#include "ui/kit/SymbolButton.h"
#include "ui/kit/Theme.h"

#include <QPainter>

namespace tessary {
namespace {

constexpr int kHeight = 20;
constexpr int kLeft = 6;
constexpr int kRight = 2;
constexpr int kSymbolSize = 12;
constexpr int kTarget = 16;

} // namespace

TagChip::TagChip(const Theme& theme, const QString& text, QWidget* parent)
    : QWidget(parent),
      m_theme(theme),
      m_text(text),
      m_remove(new SymbolButton(theme, QStringLiteral("xmark"), this))
{
    setToolTip(text);
    setAccessibleRole(*this, QAccessible::StaticText);
    setAccessibleName(text);
    m_remove->setSymbolSize(kSymbolSize);
    m_remove->setExtent(kTarget);
    m_remove->setAccessibleName(tr("移除标签 %1").arg(text));
    connect(m_remove, &QAbstractButton::clicked, this, &TagChip::removed);
}

void TagChip::setRemovable(bool isRemovable)
{
    m_remove->setVisible(isRemovable);
}

QSize TagChip::sizeHint() const
{
    const int text = QFontMetrics(m_theme.font(Theme::kCaptionSize)).horizontalAdvance(m_text);
    return {kLeft + text + 2 + m_remove->sizeHint().width() + kRight, m_theme.scaled(kHeight)};
}

void TagChip::resizeEvent(QResizeEvent*)
{
    const QSize size = m_remove->sizeHint();
    m_remove->setGeometry(width() - kRight - size.width(), (height() - size.height()) / 2, size.width(),
                          size.height());
}

void TagChip::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(m_theme.colours().raised);
    painter.drawRoundedRect(rect(), Theme::kCapRadius, Theme::kCapRadius);
    painter.setPen(m_theme.colours().text);
    painter.setFont(m_theme.font(Theme::kCaptionSize));
    const QRect area(kLeft, 0, m_remove->x() - kLeft, height());
    drawSingleLine(painter, area, painter.fontMetrics().elidedText(m_text, Qt::ElideRight, area.width()));
}

} // namespace tessary
