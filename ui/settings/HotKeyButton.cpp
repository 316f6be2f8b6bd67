#include "ui/settings/HotKeyButton.h"

#include "ui/kit/SingleLine.h"
#include "ui/kit/Symbol.h"
#include "ui/kit/Theme.h"

#include <QPainter>

#include <algorithm>

namespace tessary {
namespace {

constexpr int kRing = 3; // around the face, for the focus ring
constexpr int kHeight = 28;
constexpr int kNarrowest = 128;
constexpr int kPadding = 8;
constexpr int kKeyGap = 5;
constexpr int kGlyph = 14;
constexpr int kRecordSymbol = 16;
constexpr int kRecordGap = 4;

/// The symbols that stand for the modifiers, in the order of their characters.
QStringList modifierSymbols(const HotKeyShortcut& shortcut)
{
    QStringList symbols;
    const auto add = [&](quint32 modifier, const char* symbol) {
        if ((shortcut.modifiers & modifier) != 0)
            symbols.append(QLatin1String(symbol));
    };
    add(HotKeyModifier::kControl, "control");
    add(HotKeyModifier::kOption, "option");
    add(HotKeyModifier::kShift, "shift");
    add(HotKeyModifier::kCommand, "command");
    return symbols;
}

} // namespace

HotKeyButton::HotKeyButton(const Theme& theme, QWidget* parent)
    : QAbstractButton(parent),
      m_theme(theme),
      m_hover(theme, *this)
{
    setFocusPolicy(Qt::TabFocus);
    setAttribute(Qt::WA_Hover);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    connect(&theme, &Theme::changed, this, [this] {
        updateGeometry();
        update();
    });
    describe();
}

void HotKeyButton::setShortcut(const HotKeyShortcut& shortcut)
{
    m_shortcut = shortcut;
    describe();
}

void HotKeyButton::setRecording(bool isRecording)
{
    m_isRecording = isRecording;
    describe();
}

void HotKeyButton::describe()
{
    if (m_isRecording)
        setText(tr("正在录制..."));
    else
        setText(m_shortcut.isDisabled() ? tr("未设置") : m_shortcut.modifierTitle() + m_shortcut.keyLabel);
    updateGeometry();
    update();
}

int HotKeyButton::keysWidth() const
{
    const auto glyphs = static_cast<int>(modifierSymbols(m_shortcut).size());
    const QFontMetrics metrics(m_theme.font(Theme::kBodySize, QFont::Medium));
    return glyphs * (m_theme.scaled(kGlyph) + kKeyGap) + metrics.horizontalAdvance(m_shortcut.keyLabel);
}

QSize HotKeyButton::sizeHint() const
{
    const QFontMetrics metrics(m_theme.font(Theme::kBodySize));
    const int recording = kRecordSymbol + kRecordGap + metrics.horizontalAdvance(tr("正在录制..."));
    const int content = std::max(recording, keysWidth()) + 2 * kPadding;
    return {std::max(kNarrowest, content) + 2 * kRing, m_theme.scaled(kHeight) + 2 * kRing};
}

void HotKeyButton::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRect area = rect().adjusted(kRing, kRing, -kRing, -kRing);
    paintFace(painter, area);
    if (m_isRecording) {
        paintRecording(painter, area);
    } else if (m_shortcut.isDisabled()) {
        painter.setPen(m_theme.colours().secondaryText);
        painter.setFont(m_theme.font(Theme::kBodySize));
        drawSingleLine(painter, area, text(), Qt::AlignHCenter);
    } else {
        paintKeys(painter, area);
    }
    if (!m_isRecording)
        m_focusRing.paint(painter, m_theme, rect(), Theme::kControlRadius + kRing);
}

void HotKeyButton::paintFace(QPainter& painter, const QRect& area) const
{
    const ThemeColours& colours = m_theme.colours();
    const double line = m_isRecording ? 2 : 1;
    painter.setPen(QPen(m_isRecording ? colours.accentText : colours.edge, line));
    if (m_isRecording)
        painter.setBrush(colours.accentTint);
    else if (isDown())
        painter.setBrush(m_theme.isDark() ? QColor(0x2B, 0x2B, 0x2E) : colours.pressed);
    else if (m_hover.value() > 0.5)
        painter.setBrush(m_theme.isDark() ? QColor(0x3C, 0x3C, 0x41) : colours.raised);
    else
        painter.setBrush(m_theme.isDark() ? colours.raised : colours.surface);
    const double inset = line / 2;
    painter.drawRoundedRect(QRectF(area).adjusted(inset, inset, -inset, -inset), Theme::kControlRadius,
                            Theme::kControlRadius);
}

void HotKeyButton::paintKeys(QPainter& painter, const QRect& area) const
{
    const QColor colour = m_theme.colours().text;
    const int glyph = m_theme.scaled(kGlyph);
    int left = area.left() + (area.width() - keysWidth()) / 2;
    for (const QString& symbol : modifierSymbols(m_shortcut)) {
        painter.drawPixmap(left, area.top() + (area.height() - glyph) / 2,
                           Symbol(symbol).pixmap(glyph, colour, devicePixelRatioF()));
        left += glyph + kKeyGap;
    }
    painter.setPen(colour);
    painter.setFont(m_theme.font(Theme::kBodySize, QFont::Medium));
    drawSingleLine(painter, QRect(left, area.top(), area.right() - left, area.height()), m_shortcut.keyLabel);
}

void HotKeyButton::paintRecording(QPainter& painter, const QRect& area) const
{
    painter.setFont(m_theme.font(Theme::kBodySize));
    const int textWidth = painter.fontMetrics().horizontalAdvance(text());
    int left = area.left() + (area.width() - kRecordSymbol - kRecordGap - textWidth) / 2;
    painter.drawPixmap(left, area.top() + (area.height() - kRecordSymbol) / 2,
                       Symbol(QStringLiteral("record.circle.fill"))
                           .pixmap(kRecordSymbol, m_theme.colours().danger, devicePixelRatioF()));
    left += kRecordSymbol + kRecordGap;
    painter.setPen(m_theme.colours().text);
    drawSingleLine(painter, QRect(left, area.top(), textWidth, area.height()), text());
}

} // namespace tessary
