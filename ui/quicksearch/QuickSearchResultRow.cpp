#include "ui/quicksearch/QuickSearchResultRow.h"

#include "ui/kit/SingleLine.h"
#include "ui/kit/Symbol.h"
#include "ui/kit/Theme.h"
#include "ui/quicksearch/TileImages.h"

#include <QCoreApplication>
#include <QPainter>
#include <QPainterPath>

namespace tessary {
namespace {

constexpr int kPadding = 8;
constexpr int kTile = 40;
constexpr int kAppIcon = 32;
constexpr int kKindSymbol = 20;
constexpr int kTextLeft = 60;
constexpr int kTitleTop = 9;
constexpr int kTitleHeight = 20;
constexpr int kCaptionTop = 31;
constexpr int kCaptionHeight = 16;
constexpr int kMark = 12;
constexpr int kMarkGap = 4;
constexpr int kMarksToTitle = 8;
constexpr int kMarkTop = kTitleTop + (kTitleHeight - kMark) / 2;

QString translated(const char* text)
{
    return QCoreApplication::translate("QuickSearchResultRow", text);
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
        return translated("刚刚");
    const auto seconds = static_cast<qint64>(std::min(difference, 1e15)); // some clocks are very wrong
    if (seconds < kDay)
        return QString::number(seconds / kMinute) + translated(" 分钟前");
    return QString::number(seconds / kDay) + translated(" 天前");
}

QString QuickSearchResultRow::kindText(const ScreenshotRecord& record)
{
    return record.contentType == ClipboardContentType::Text ? translated("文字") : translated("图片");
}

QString QuickSearchResultRow::accessibleText(const ScreenshotRecord& record, Date now)
{
    QStringList parts{rowTitle(record), kindText(record)};
    if (record.sourceAppName)
        parts.append(*record.sourceAppName);
    parts.append(relativeMinuteText(record.capturedAt, now));
    if (record.isPinned)
        parts.append(translated("置顶"));
    if (record.isFavorite)
        parts.append(translated("收藏"));
    return parts.join(QStringLiteral(", "));
}

int QuickSearchResultRow::titleWidth(const ScreenshotRecord& record, int rowWidth)
{
    const int marks = markCount(record);
    const int forMarks = marks == 0 ? 0 : kMarksToTitle + marks * kMark + (marks - 1) * kMarkGap;
    return rowWidth - kTextLeft - kPadding - forMarks;
}

void QuickSearchResultRow::paint(QPainter& painter, const QRect& row, const Theme& theme, TileImages& tiles,
                                 const ShownTitle& title, Date now) const
{
    painter.save();
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    paintBackground(painter, row, theme);
    paintTile(painter, QRect(row.left() + kPadding, row.top() + kPadding, kTile, kTile), theme, tiles);
    const int textLeft = row.left() + kTextLeft;
    paintTitle(painter,
               QRect(textLeft, row.top() + kTitleTop, titleWidth(m_record, row.width()), kTitleHeight), theme,
               title);
    paintCaption(painter,
                 QRect(textLeft, row.top() + kCaptionTop, row.width() - kTextLeft - kPadding, kCaptionHeight),
                 theme, now);
    paintMarks(painter, row, theme);
    painter.restore();
}

void QuickSearchResultRow::paintBackground(QPainter& painter, const QRect& row, const Theme& theme) const
{
    constexpr double kRing = 2;
    if (!m_state.isSelected && !m_state.isHovered)
        return;
    painter.setPen(Qt::NoPen);
    painter.setBrush(m_state.isSelected ? theme.colours().accent : theme.colours().raised);
    painter.drawRoundedRect(row, Theme::kRowRadius, Theme::kRowRadius);
    if (!m_state.hasRing || !m_state.isSelected)
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
    painter.setPen(m_state.isSelected ? theme.colours().onAccent : theme.colours().text);
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
        caption = kind + metrics.elidedText(app, Qt::ElideRight, room) + separator() + age;
    }
    painter.setFont(font);
    painter.setPen(m_state.isSelected ? theme.colours().secondaryOnAccent : theme.colours().secondaryText);
    drawSingleLine(painter, area, caption);
}

void QuickSearchResultRow::paintMarks(QPainter& painter, const QRect& row, const Theme& theme) const
{
    const QColor colour = m_state.isSelected ? theme.colours().secondaryOnAccent : theme.colours().tertiary;
    int left = row.right() + 1 - kPadding;
    const auto mark = [&](const char* name) {
        left -= kMark;
        painter.drawPixmap(left, row.top() + kMarkTop,
                           Symbol(QLatin1String(name)).pixmap(kMark, colour, pixelRatio(painter)));
        left -= kMarkGap;
    };
    if (m_record.isFavorite)
        mark("star.fill");
    if (m_record.isPinned)
        mark("pin.fill");
}

} // namespace tessary
