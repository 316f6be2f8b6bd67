#include "ui/quicksearch/RowTitle.h"

#include <QFontMetricsF>

namespace tessary {
namespace {

constexpr qsizetype kExamined = 256; // more than any row shows
constexpr QChar kEllipsis(0x2026);

/// Line breaks, tabs and control characters as blanks.
QString oneLine(const QString& text)
{
    QString line = text.left(kExamined);
    for (QChar& character : line) {
        if (character.category() == QChar::Other_Control || character.isSpace())
            character = QLatin1Char(' ');
    }
    return line.trimmed();
}

QList<QTextLayout::FormatRange> matches(const QString& text, const QStringList& keywords, const QFont& font)
{
    QTextCharFormat format;
    format.setFont(font);
    QList<QTextLayout::FormatRange> ranges;
    for (const QString& keyword : keywords) {
        const qsizetype length = keyword.size();
        for (qsizetype at = text.indexOf(keyword, 0, Qt::CaseInsensitive); length > 0 && at >= 0;
             at = text.indexOf(keyword, at + length, Qt::CaseInsensitive)) {
            ranges.append({static_cast<int>(at), static_cast<int>(length), format});
        }
    }
    return ranges;
}

/// Where the text has to be cut for it and an ellipsis to fit; its length when it fits as it is.
qsizetype cutFor(const ShownTitle& title, const QFont& font, double width)
{
    QTextLayout layout(title.text, font);
    QTextOption option;
    option.setWrapMode(QTextOption::NoWrap);
    layout.setTextOption(option);
    layout.setFormats(title.emphasis);
    layout.beginLayout();
    QTextLine line = layout.createLine();
    if (line.isValid())
        line.setLineWidth(width);
    layout.endLayout();
    if (!line.isValid() || line.naturalTextWidth() <= width)
        return title.text.size();
    const double room = width - QFontMetricsF(font).horizontalAdvance(kEllipsis);
    int cut = line.xToCursor(room, QTextLine::CursorBetweenCharacters);
    while (cut > 0 && line.cursorToX(cut) > room)
        cut = layout.previousCursorPosition(cut);
    return cut;
}

} // namespace

QString rowTitle(const ScreenshotRecord& record)
{
    if (record.contentType == ClipboardContentType::Text)
        return oneLine(record.filename.isEmpty() ? record.textContent : record.filename);
    const qsizetype dot = record.filename.lastIndexOf(QLatin1Char('.'));
    return oneLine(dot > 0 ? record.filename.left(dot) : record.filename);
}

ShownTitle shownTitle(const ScreenshotRecord& record, const QStringList& keywords, const QFont& font,
                      const QFont& emphasised, double width)
{
    ShownTitle title{rowTitle(record), {}};
    title.emphasis = matches(title.text, keywords, emphasised);
    const bool isText = record.contentType == ClipboardContentType::Text;
    if (!isText || title.text.isRightToLeft()) {
        const QFontMetricsF metrics(title.emphasis.isEmpty() ? font : emphasised);
        title.text = metrics.elidedText(title.text, isText ? Qt::ElideRight : Qt::ElideMiddle, width);
    } else if (const qsizetype cut = cutFor(title, font, width); cut < title.text.size()) {
        title.text = title.text.left(cut).trimmed() + kEllipsis;
    }
    title.emphasis = matches(title.text, keywords, emphasised);
    return title;
}

} // namespace tessary
