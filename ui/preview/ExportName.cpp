#include "ui/preview/ExportName.h"

#include "ui/quicksearch/RowTitle.h"

#include <QCoreApplication>

#include <algorithm>

namespace tessary {
namespace {

constexpr qsizetype kMostBytes = 200;

QString extension(const ScreenshotRecord& record)
{
    if (record.contentType == ClipboardContentType::Text)
        return QStringLiteral(".txt");
    return record.fileType.isEmpty() ? QString() : QLatin1Char('.') + record.fileType;
}

QString firstLine(const QString& text)
{
    const QString beginning = text.first(std::min(text.size(), 4 * kMostBytes)).trimmed();
    return beginning.section(QLatin1Char('\n'), 0, 0);
}

bool isRefused(QChar character)
{
    static const QString kRefused = QStringLiteral("/\\:*?\"<>|");
    return !character.isPrint() || kRefused.contains(character);
}

} // namespace

QString exportName(const ScreenshotRecord& record)
{
    const QString end = extension(record);
    const bool isText = record.contentType == ClipboardContentType::Text;
    QString name = isText ? firstLine(record.textContent) : rowTitle(record);
    if (!end.isEmpty() && name.endsWith(end, Qt::CaseInsensitive))
        name.chop(end.size());
    for (QChar& character : name)
        if (!character.isSurrogate() && isRefused(character))
            character = QLatin1Char(' ');
    name = name.simplified();
    while (name.startsWith(QLatin1Char('.')) || name.startsWith(QLatin1Char(' ')))
        name.remove(0, 1);
    while (name.toUtf8().size() > kMostBytes - end.size())
        name.chop(name.back().isLowSurrogate() ? 2 : 1);
    name = name.trimmed();
    while (name.endsWith(QLatin1Char('.')))
        name.chop(1);
    if (name.isEmpty())
        name = isText ? QCoreApplication::translate("ExportName", "文字")
                      : QCoreApplication::translate("ExportName", "图片");
    return name + end;
}

} // namespace tessary
