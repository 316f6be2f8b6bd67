#include "ui/kit/ThemedLabel.h"

#include "ui/kit/Theme.h"

#include <algorithm>

namespace tessary {

const ThemedLabel::Look ThemedLabel::kBody{Theme::kBodySize, QFont::Normal, &ThemeColours::text, 20};
const ThemedLabel::Look ThemedLabel::kTitle{Theme::kBodySize, QFont::DemiBold, &ThemeColours::text, 20};
const ThemedLabel::Look ThemedLabel::kNote{Theme::kCaptionSize, QFont::Normal, &ThemeColours::secondaryText,
                                           18};
const ThemedLabel::Look ThemedLabel::kWarning{Theme::kCaptionSize, QFont::Normal, &ThemeColours::warning, 16};

ThemedLabel::ThemedLabel(const Theme& theme, const Look& look, const QString& text, QWidget* parent)
    : QLabel(text, parent),
      m_theme(theme),
      m_look(look)
{
    setTextFormat(Qt::PlainText);
    applyTheme();
    connect(&theme, &Theme::changed, this, &ThemedLabel::applyTheme);
}

void ThemedLabel::setColour(QColor ThemeColours::*colour)
{
    m_look.colour = colour;
    applyTheme();
}

void ThemedLabel::applyTheme()
{
    setFont(m_theme.font(m_look.size, m_look.weight));
    QPalette colours = palette();
    colours.setColor(QPalette::WindowText, m_theme.colours().*m_look.colour);
    setPalette(colours);
    elide();
    updateGeometry();
}

void ThemedLabel::setElided(const QString& text)
{
    m_elided = text;
    setAccessibleName(text);
    elide();
    updateGeometry();
}

QString ThemedLabel::wholeText() const
{
    return m_elided.isEmpty() ? text() : m_elided;
}

void ThemedLabel::elide()
{
    if (m_elided.isEmpty())
        return;
    const QString shown = fontMetrics().elidedText(m_elided, Qt::ElideMiddle, width());
    setText(shown);
    setToolTip(shown == m_elided ? QString() : m_elided);
}

QSize ThemedLabel::sizeHint() const
{
    QSize size = QLabel::sizeHint();
    if (!m_elided.isEmpty())
        size.setWidth(fontMetrics().horizontalAdvance(m_elided) + 1);
    size.setHeight(std::max(size.height(), m_theme.scaled(m_look.lineHeight)));
    return size;
}

QSize ThemedLabel::minimumSizeHint() const
{
    QSize size = QLabel::minimumSizeHint();
    if (!m_elided.isEmpty())
        size.setWidth(0);
    size.setHeight(std::max(size.height(), m_theme.scaled(m_look.lineHeight)));
    return size;
}

void ThemedLabel::resizeEvent(QResizeEvent* event)
{
    QLabel::resizeEvent(event);
    elide();
}

} // namespace tessary
