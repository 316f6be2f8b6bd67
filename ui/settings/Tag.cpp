#include "ui/settings/Tag.h"

#include "ui/kit/SingleLine.h"
#include "ui/kit/Theme.h"

#include <QPainter>

namespace tessary {
namespace {

constexpr int kHeight = 20;
constexpr int kPadding = 6;

} // namespace

Tag::Tag(const Theme& theme, const QString& text, QWidget* parent)
    : QWidget(parent),
      m_theme(theme),
      m_text(text)
{
    setAccessibleName(text);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    connect(&theme, &Theme::changed, this, [this] {
        updateGeometry();
        update();
    });
}

QSize Tag::sizeHint() const
{
    const QFontMetrics metrics(m_theme.font(Theme::kCaptionSize));
    return {metrics.horizontalAdvance(m_text) + 2 * kPadding, m_theme.scaled(kHeight)};
}

void Tag::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(m_theme.colours().raised);
    painter.drawRoundedRect(rect(), Theme::kCapRadius, Theme::kCapRadius);
    painter.setPen(m_theme.colours().text);
    painter.setFont(m_theme.font(Theme::kCaptionSize));
    drawSingleLine(painter, rect(), m_text, Qt::AlignHCenter);
}

} // namespace tessary
