#include "app/archive/ArchiveLayout.h"

#include <QJsonDocument>

namespace tessary {
namespace {

QString below(QLatin1String folder, const QString& path)
{
    return path.isEmpty() ? path : folder + path.mid(path.lastIndexOf(QLatin1Char('/')));
}

} // namespace

ScreenshotRecord ArchiveLayout::relative(ScreenshotRecord record)
{
    record.libraryPath = below(kOriginals, record.libraryPath);
    if (record.thumbnailPath)
        record.thumbnailPath = below(kThumbnails, *record.thumbnailPath);
    if (record.sourceAppIconPath)
        record.sourceAppIconPath = below(kAppIcons, *record.sourceAppIconPath);
    return record;
}

QByteArray ArchiveLayout::line(const ScreenshotRecord& record)
{
    return QJsonDocument(encodeWholeRecord(record)).toJson(QJsonDocument::Compact) + '\n';
}

std::optional<ScreenshotRecord> ArchiveLayout::item(const QByteArray& line)
{
    const QJsonDocument document = QJsonDocument::fromJson(line);
    if (!document.isObject())
        return std::nullopt;
    std::optional<ScreenshotRecord> record = decodeRecord(document.object());
    if (record && (record->id.isNull() || record->contentHash.isEmpty() || record->duplicateCount < 1))
        return std::nullopt;
    return record;
}

} // namespace tessary
