#include "app/ItemExporter.h"

#include "base/AtomicFile.h"

#include <QFileInfo>

namespace tessary {
namespace {

void writeNow(const ScreenshotRecord& record, const QString& path)
{
    if (record.contentType == ClipboardContentType::Text)
        writeFileAtomically(path, record.textContent.toUtf8(), Durability::PowerCut);
    else
        copyFileAtomically(record.libraryPath, path, Durability::PowerCut);
}

} // namespace

ItemExporter::ItemExporter() : m_lane(QStringLiteral("com.tessary.export")) {}

QCoro::Task<bool> ItemExporter::isTaken(QString path)
{
    auto work = m_lane.post([path] { return QFileInfo(path).exists() || QFileInfo(path).isSymLink(); },
                            m_stop.get_token());
    const bool isTaken = co_await work;
    co_return isTaken;
}

QCoro::Task<> ItemExporter::write(ScreenshotRecord record, QString path)
{
    auto work = m_lane.post([record, path] { writeNow(record, path); }, m_stop.get_token());
    co_await work;
}

} // namespace tessary
