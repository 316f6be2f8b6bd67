#include "store/ItemRemover.h"

#include "store/CoreDataScreenshotStore.h"
#include "store/Projection.h"

#include <QSet>

namespace tessary {
namespace {

qint64 sizeOf(const ItemFiles& item)
{
    return std::max<qint64>(item.fileSize, 0);
}

void compact(SQLiteConnection& connection)
{
    try {
        connection.run("VACUUM");
        connection.run("PRAGMA wal_checkpoint(TRUNCATE)");
    } catch (const std::exception& error) {
        qWarning("An emptied database keeps its size for now: %s", error.what());
    }
}

} // namespace

RemovedItems ItemRemover::removeTrash(Projection& projection, std::optional<Date> olderThan, int most)
{
    const QList<ItemFiles> expired = m_records.trashedFiles(olderThan, most);
    RemovedItems removed = remove(projection, expired);
    removed.isComplete = expired.size() < most;
    return removed;
}

RemovedItems ItemRemover::removeOldestPictures(Projection& projection, qint64 limit, int most)
{
    qint64 total = totalSize();
    if (total <= limit)
        return {};
    const QList<ItemFiles> candidates = m_records.oldestPictureFiles(most);
    QList<ItemFiles> chosen;
    for (const ItemFiles& candidate : candidates) {
        if (total <= limit)
            break;
        chosen.append(candidate);
        total -= sizeOf(candidate);
    }
    RemovedItems removed = remove(projection, chosen);
    m_size = KnownSize{total, m_records.changeCount()};
    removed.isComplete = total <= limit || candidates.size() < most;
    return removed;
}

qint64 ItemRemover::totalSize()
{
    const qint64 change = m_records.changeCount();
    if (!m_size || m_size->asOfChange != change)
        m_size = KnownSize{m_records.totalFileSize(), change};
    return m_size->bytes;
}

RemovedItems ItemRemover::remove(Projection& projection, const QList<ItemFiles>& items)
{
    if (items.isEmpty())
        return {};
    RemovedItems removed;
    SQLiteTransaction records(m_records.connection());
    SQLiteTransaction rows(projection.connection());
    for (const ItemFiles& item : items) {
        m_records.discard(item.id);
        projection.remove(identifierText(item.id));
    }
    const QSet<QString> foreignFiles = m_records.foreignFiles();
    for (const ItemFiles& item : items)
        removed.items.append({item.id, filesOnlyOf(item, foreignFiles)});
    rows.commit();
    records.commit();
    return removed;
}

/// @param foreignFiles what the items that are left refer to although it carries another item's name.
QStringList ItemRemover::filesOnlyOf(const ItemFiles& item, const QSet<QString>& foreignFiles)
{
    QStringList files = item.paths;
    files.removeIf([&](const QString& path) {
        if (path.contains(identifierText(item.id)))
            return foreignFiles.contains(path);
        return m_records.refersTo(path);
    });
    return files;
}

void ItemRemover::removeEverything(Projection& projection)
{
    {
        SQLiteTransaction records(m_records.connection());
        m_records.discardAll();
        projection.removeAll();
        records.commit();
    }
    compact(projection.connection());
    compact(m_records.connection());
}

} // namespace tessary
