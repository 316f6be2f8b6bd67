#include "ui/kit/KeyCap.h"

#include "ui/kit/AccessibleRole.h"
#include "ui/kit/SingleLine.h"
#include "ui/kit/Symbol.h"
#include "ui/kit/Theme.h"

#include <QHash>
#include <QPainter>

namespace tessary {
namespace {

constexpr int kHeight = 20;
constexpr int kLineHeight = 14;
constexpr int kPadding = 5;
constexpr int kGlyphSize = 12;
constexpr int kGap = 1;

/// The name of the symbol that stands for a character, empty for ordinary ones.
QString glyph(QChar character)
{
    static const QHash<char16_t, QString> kGlyphs{
        {u'⌘', QStringLiteral("command")}, {u'⌥', QStringLiteral("option")},
        {u'⌃', QStringLiteral("control")}, {u'⇧', QStringLiteral("shift")},
        {u'↵', QStringLiteral("return")},
    };
    return kGlyphs.value(character.unicode());
}

struct Piece {
    QString symbol; ///< Or else text.
    QString text;
};

QList<Piece> pieces(const QString& text)
{
    QList<Piece> pieces;
    for (const QChar character : text) {
        const QString symbol = glyph(character);
        if (!symbol.isEmpty())
            pieces.append({symbol, {}});
        else if (!pieces.isEmpty() && pieces.last().symbol.isEmpty())
            pieces.last().text += character;
        else
            pieces.append({{}, QString(character)});
    }
    return pieces;
}

int widthOf(const Piece& piece, const QFontMetrics& metrics, int glyphSize)
{
    return piece.symbol.isEmpty() ? metrics.horizontalAdvance(piece.text) : glyphSize;
}

} // namespace

KeyCap::KeyCap(const Theme& theme, const QString& text, QWidget* parent)
    : QWidget(parent),
      m_theme(theme),
      m_text(text)
{
    setAccessibleRole(*this, QAccessible::StaticText);
    setAccessibleName(text);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    connect(&theme, &Theme::changed, this, [this] {
        updateGeometry();
        update();
    });
}

int KeyCap::contentWidth() const
{
    const QFontMetrics metrics(m_theme.font(Theme::kCapSize));
    int width = 0;
    for (const Piece& piece : pieces(m_text))
        width += widthOf(piece, metrics, m_theme.scaled(kGlyphSize)) + (width > 0 ? kGap : 0);
    return width;
}

QSize KeyCap::sizeHint() const
{
    const int height = m_theme.fitting(kHeight, kLineHeight);
    return {qMax(height, contentWidth() + 2 * kPadding), height};
}

void KeyCap::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const ThemeColours& colours = m_theme.colours();
    painter.setPen(colours.keyCapLine);
    painter.setBrush(colours.raised);
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), Theme::kCapRadius,
                            Theme::kCapRadius);
    painter.setPen(colours.text);
    painter.setFont(m_theme.font(Theme::kCapSize));
    const QFontMetrics metrics = painter.fontMetrics();
    const int glyphSize = m_theme.scaled(kGlyphSize);
    int left = (width() - contentWidth()) / 2;
    for (const Piece& piece : pieces(m_text)) {
        const int pieceWidth = widthOf(piece, metrics, glyphSize);
        if (piece.symbol.isEmpty()) {
            drawSingleLine(painter, QRect(left, 0, pieceWidth, height()), piece.text);
        } else {
            painter.drawPixmap(left, (height() - glyphSize) / 2,
                               Symbol(piece.symbol).pixmap(glyphSize, colours.text, devicePixelRatioF()));
        }
        left += pieceWidth + kGap;
    }
}

} // namespace tessary
