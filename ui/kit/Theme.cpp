#include "ui/kit/Theme.h"

#include <QFontDatabase>
#include <QGuiApplication>

#include <algorithm>

namespace tessary {
namespace {

/// The desktop's family first; fallbacks name what reads well in Chinese and Japanese where they exist.
QStringList families()
{
    QStringList families{QGuiApplication::font().family()};
    families += {QStringLiteral("Noto Sans CJK SC"), QStringLiteral("Noto Sans CJK TC"),
                 QStringLiteral("Noto Sans CJK JP")};
    return families;
}

/// Without that weight Qt takes the regular one for fallback fonts, which would emphasise nothing.
bool hasDemiBold(const QString& family)
{
    const QStringList styles = QFontDatabase::styles(family);
    return std::any_of(styles.begin(), styles.end(), [&family](const QString& style) {
        return QFontDatabase::weight(family, style) == QFont::DemiBold;
    });
}

} // namespace

Theme::Theme(QObject* parent)
    : QObject(parent),
      m_hasDemiBold(hasDemiBold(QGuiApplication::font().family())),
      m_colours(themeColours(false, std::nullopt))
{
}

std::chrono::milliseconds Theme::duration(std::chrono::milliseconds wanted) const
{
    return m_reducesMotion ? std::chrono::milliseconds(0) : wanted;
}

QFont Theme::font(int pixelSize, QFont::Weight weight) const
{
    QFont font = QGuiApplication::font();
    font.setFamilies(families());
    font.setPixelSize(scaled(pixelSize));
    font.setWeight(weight == QFont::DemiBold && !m_hasDemiBold ? QFont::Bold : weight);
    return font;
}

QPalette Theme::palette() const
{
    QPalette palette;
    palette.setColor(QPalette::Window, m_colours.window);
    palette.setColor(QPalette::WindowText, m_colours.text);
    palette.setColor(QPalette::Base, m_colours.surface);
    palette.setColor(QPalette::AlternateBase, m_colours.raised);
    palette.setColor(QPalette::Text, m_colours.text);
    palette.setColor(QPalette::PlaceholderText, m_colours.placeholderText);
    palette.setColor(QPalette::Button, m_colours.raised);
    palette.setColor(QPalette::ButtonText, m_colours.text);
    palette.setColor(QPalette::Highlight, m_colours.accent);
    palette.setColor(QPalette::HighlightedText, m_colours.onAccent);
    palette.setColor(QPalette::Link, m_colours.accentText);
    palette.setColor(QPalette::ToolTipBase, m_colours.surface);
    palette.setColor(QPalette::ToolTipText, m_colours.text);
    palette.setColor(QPalette::Disabled, QPalette::Text, m_colours.tertiary);
    palette.setColor(QPalette::Disabled, QPalette::WindowText, m_colours.tertiary);
    palette.setColor(QPalette::Disabled, QPalette::ButtonText, m_colours.tertiary);
    return palette;
}

void Theme::setDark(bool isDark)
{
    if (m_isDark == isDark)
        return;
    m_isDark = isDark;
    update();
}

void Theme::setAccent(const std::optional<QColor>& accent)
{
    if (m_accent == accent)
        return;
    m_accent = accent;
    update();
}

void Theme::setTextScale(double scale)
{
    const double bounded = std::clamp(scale, 0.5, 3.0);
    if (qFuzzyCompare(m_textScale, bounded))
        return;
    m_textScale = bounded;
    Q_EMIT changed();
}

void Theme::setReducedMotion(bool isReduced)
{
    if (m_reducesMotion == isReduced)
        return;
    m_reducesMotion = isReduced;
    Q_EMIT changed();
}

void Theme::update()
{
    m_colours = themeColours(m_isDark, m_accent);
    Q_EMIT changed();
}

} // namespace tessary
