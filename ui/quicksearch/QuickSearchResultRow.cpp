#include "ui/quicksearch/QuickSearchResultRow.h"

#include "ui/kit/BlendedColour.h"
#include "ui/kit/SingleLine.h"
#include "ui/kit/Symbol.h"
#include "ui/kit/Theme.h"
#include "ui/quicksearch/TileImages.h"

#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <limits>

namespace tessary {
namespace {

constexpr int kPadding = 8;
constexpr int kTile = 40;
constexpr int kAppIcon = 32;
constexpr int kKindSymbol = 20;
constexpr int kTextLeft = 60;
constexpr int kTitleTop = 9;
constexpr int kTitleHeight = 20;
constexpr int kLineGap = 2;
constexpr int kCaptionHeight = 16;
constexpr int kMark = 12;
constexpr int kMarkGap = 4;
constexpr int kMarksToTitle = 8;

int captionTop(const Theme& theme)
{
    return kTitleTop + theme.scaled(kTitleHeight) + kLineGap;
}

QString separator()
{
    return QStringLiteral(" · ");
}

int markCount(const ScreenshotRecord& record)
{
    return (record.isPinned ? 1 : 0) + (record.isFavorite ? 1 : 0);
}

qreal pixelRatio(const QPainter& painter)
{
    return painter.device()->devicePixelRatioF();
}

} // namespace

QString QuickSearchResultRow::relativeMinuteText(Date date, Date now)
{
    constexpr qint64 kMinute = 60;
    constexpr qint64 kDay = 86'400;
    const double difference = now.secondsSince1970 - date.secondsSince1970;
    if (!(difference >= kMinute))
        return tr("刚刚");
    const auto seconds = static_cast<qint64>(std::min(difference, 1e15)); // some clocks are very wrong
    if (seconds < kDay)
        return tr("%n 分钟前", nullptr, static_cast<int>(seconds / kMinute));
    const qint64 days = std::min<qint64>(seconds / kDay, std::numeric_limits<int>::max());
    return tr("%n 天前", nullptr, static_cast<int>(days));
}

QString QuickSearchResultRow::kindText(const ScreenshotRecord& record)
{
    return record.contentType == ClipboardContentType::Text ? tr("文字") : tr("图片");
}

QString QuickSearchResultRow::accessibleText(const ScreenshotRecord& record, Date now)
{
    QStringList parts{rowTitle(record), kindText(record)};
    if (record.sourceAppName)
        parts.append(*record.sourceAppName);
    parts.append(relativeMinuteText(record.capturedAt, now));
    if (record.isPinned)
        parts.append(tr("置顶"));
    if (record.isFavorite)
        parts.append(tr("收藏"));
    return parts.join(QStringLiteral(", "));
}

int QuickSearchResultRow::height(const Theme& theme)
{
    return captionTop(theme) + theme.scaled(kCaptionHeight) + kTitleTop;
}

QColor QuickSearchResultRow::colour(const QColor& rest, const QColor& selected) const
{
    return blended(rest, selected, m_state.selected);
}

int QuickSearchResultRow::titleWidth(const ScreenshotRecord& record, int rowWidth, const Theme& theme)
{
    const int marks = markCount(record);
    const int forMarks =
        marks == 0 ? 0 : kMarksToTitle + marks * theme.scaled(kMark) + (marks - 1) * kMarkGap;
    return rowWidth - kTextLeft - kPadding - forMarks;
}

void QuickSearchResultRow::paint(QPainter& painter, const QRect& row, const Theme& theme, TileImages& tiles,
                                 const ShownTitle& title, Date now) const
{
    painter.save();
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    paintBackground(painter, row, theme);
    const int tileTop = row.top() + (row.height() - kTile) / 2;
    paintTile(painter, QRect(row.left() + kPadding, tileTop, kTile, kTile), theme, tiles);
    const int textLeft = row.left() + kTextLeft;
    paintTitle(painter,
               QRect(textLeft, row.top() + kTitleTop, titleWidth(m_record, row.width(), theme),
                     theme.scaled(kTitleHeight)),
               theme, title);
    paintCaption(painter,
                 QRect(textLeft, row.top() + captionTop(theme), row.width() - kTextLeft - kPadding,
                       theme.scaled(kCaptionHeight)),
                 theme, now);
    paintMarks(painter, row, theme);
    painter.restore();
}

void QuickSearchResultRow::paintBackground(QPainter& painter, const QRect& row, const Theme& theme) const
{
    constexpr double kRing = 2;
    if (m_state.selected <= 0 && m_state.hovered <= 0)
        return;
    const ThemeColours& colours = theme.colours();
    QColor fill = blended(transparent(colours.raised), colours.raised, m_state.hovered);
    if (m_state.selected > 0)
        fill = blended(m_state.hovered > 0 ? fill : transparent(colours.accent), colours.accent,
                       m_state.selected);
    painter.setPen(Qt::NoPen);
    painter.setBrush(fill);
    painter.drawRoundedRect(row, Theme::kRowRadius, Theme::kRowRadius);
    if (!m_state.hasRing || m_state.selected < 1)
        return;
    painter.setPen(QPen(theme.colours().onAccent, kRing));
    painter.setBrush(Qt::NoBrush);
    const double inset = kRing * 1.5;
    painter.drawRoundedRect(QRectF(row).adjusted(inset, inset, -inset, -inset), Theme::kControlRadius,
                            Theme::kControlRadius);
}

void QuickSearchResultRow::paintTile(QPainter& painter, const QRect& tile, const Theme& theme,
                                     TileImages& tiles) const
{
    const qreal ratio = pixelRatio(painter);
    const bool isText = m_record.contentType == ClipboardContentType::Text;
    const QString path = (isText ? m_record.sourceAppIconPath : m_record.thumbnailPath).value_or(QString());
    const int side = isText ? kAppIcon : kTile;
    const QPixmap picture =
        tiles.tile(path, side, isText ? TileImages::Fit::Whole : TileImages::Fit::Fill, ratio);
    QPainterPath shape;
    shape.addRoundedRect(tile, Theme::kControlRadius, Theme::kControlRadius);
    if (picture.isNull()) {
        painter.fillPath(shape, theme.colours().raised);
        const QString symbol = isText ? QStringLiteral("text.alignleft") : QStringLiteral("photo");
        const int inset = (kTile - kKindSymbol) / 2;
        painter.drawPixmap(tile.topLeft() + QPoint(inset, inset),
                           Symbol(symbol).pixmap(kKindSymbol, theme.colours().tertiary, ratio));
        return;
    }
    const QSizeF size = picture.deviceIndependentSize();
    const QRectF place(
        QPointF(tile.left() + (kTile - size.width()) / 2, tile.top() + (kTile - size.height()) / 2), size);
    if (isText) {
        painter.drawPixmap(place.topLeft(), picture);
        return;
    }
    painter.save();
    painter.fillPath(shape, theme.colours().mat); // seen through transparent pictures
    painter.setClipPath(shape);
    painter.drawPixmap(tile.topLeft(), picture);
    painter.setClipping(false);
    painter.setPen(theme.colours().pictureLine);
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(QRectF(tile).adjusted(0.5, 0.5, -0.5, -0.5), Theme::kControlRadius - 0.5,
                            Theme::kControlRadius - 0.5);
    painter.restore();
}

void QuickSearchResultRow::paintTitle(QPainter& painter, const QRect& area, const Theme& theme,
                                      const ShownTitle& title) const
{
    QTextLayout layout(title.text, theme.font(Theme::kBodySize));
    QTextOption option;
    if (title.text.isRightToLeft()) {
        option.setTextDirection(Qt::RightToLeft);
        option.setAlignment(Qt::AlignRight | Qt::AlignAbsolute);
    }
    option.setWrapMode(QTextOption::NoWrap);
    layout.setTextOption(option);
    layout.setFormats(title.emphasis);
    layout.beginLayout();
    QTextLine line = layout.createLine();
    if (line.isValid())
        line.setLineWidth(area.width());
    layout.endLayout();
    painter.setPen(colour(theme.colours().text, theme.colours().onAccent));
    const double baseline = centredBaseline(theme.font(Theme::kBodySize), area);
    const double top = baseline - (line.isValid() ? line.ascent() : 0);
    painter.setClipRect(area.adjusted(0, -2, 0, 2));
    layout.draw(&painter, QPointF(area.left(), top));
    painter.setClipping(false);
}

void QuickSearchResultRow::paintCaption(QPainter& painter, const QRect& area, const Theme& theme,
                                        Date now) const
{
    const QFont font = theme.font(Theme::kCaptionSize);
    const QFontMetrics metrics(font);
    const QString kind = kindText(m_record) + separator();
    const QString age = relativeMinuteText(m_record.capturedAt, now);
    QString caption = kind + age;
    const QString app = m_record.sourceAppName.value_or(QString()).simplified();
    if (!app.isEmpty()) {
        const int room = area.width() - metrics.horizontalAdvance(kind + separator() + age);
        const QString shown = metrics.elidedText(app, Qt::ElideRight, room);
        if (shown.size() > 1) // more than an ellipsis
            caption = kind + shown + separator() + age;
    }
    painter.setFont(font);
    painter.setPen(colour(theme.colours().secondaryText, theme.colours().secondaryOnAccent));
    drawSingleLine(painter, area, caption);
}

void QuickSearchResultRow::paintMarks(QPainter& painter, const QRect& row, const Theme& theme) const
{
    // Between the two colours a symbol would be drawn anew for each step of the fade.
    const QColor colour =
        m_state.selected > 0.5 ? theme.colours().secondaryOnAccent : theme.colours().tertiary;
    const int size = theme.scaled(kMark);
    const int top = row.top() + kTitleTop + (theme.scaled(kTitleHeight) - size) / 2;
    int left = row.right() + 1 - kPadding;
    const auto mark = [&](const char* name) {
        left -= size;
        painter.drawPixmap(left, top, Symbol(QLatin1String(name)).pixmap(size, colour, pixelRatio(painter)));
        left -= kMarkGap;
    };
    if (m_record.isFavorite)
        mark("star.fill");
    if (m_record.isPinned)
        mark("pin.fill");
}

} // namespace tessary
