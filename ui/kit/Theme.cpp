#include "ui/kit/Theme.h"

#include <QGuiApplication>

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

} // namespace

Theme::Theme(QObject* parent) : QObject(parent), m_colours(themeColours(false, std::nullopt)) {}

std::chrono::milliseconds Theme::duration(std::chrono::milliseconds wanted) const
{
    return m_reducesMotion ? std::chrono::milliseconds(0) : wanted;
}

QFont Theme::font(int pixelSize, QFont::Weight weight) const
{
    QFont font = QGuiApplication::font();
    font.setFamilies(families());
    font.setPixelSize(pixelSize);
    font.setWeight(weight);
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

void Theme::update()
{
    m_colours = themeColours(m_isDark, m_accent);
    Q_EMIT changed();
}

} // namespace tessary
