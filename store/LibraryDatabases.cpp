#include "store/LibraryDatabases.h"

#include "store/StoreError.h"
#include "store/TagsCoding.h"

#include <limits>

namespace tessary {

LibraryDatabases::LibraryDatabases(const QString& path, QString projectionPath)
    : m_structuredStore(path),
      m_remover(m_structuredStore),
      m_projectionPath(std::move(projectionPath)),
      m_projection(std::in_place, m_projectionPath)
{
}

bool LibraryDatabases::insert(const ScreenshotRecord& record)
{
    if (!m_structuredStore.insert(record))
        return false;
    try {
        SQLiteTransaction transaction(projection().connection());
        const bool added = projection().insertProjection(record);
        if (added)
            projection().updateSearchIndex(record);
        else
            m_structuredStore.remove(record.id);
        transaction.commit();
        return added;
    } catch (...) {
        removeQuietly(record.id);
        throw;
    }
}

void LibraryDatabases::registerDuplicate(const QString& contentHash, Date now)
{
    std::optional<ScreenshotRecord> record = m_structuredStore.record(contentHash);
    if (!record)
        return;
    if (record->duplicateCount == std::numeric_limits<qint64>::max())
        throw StoreError(StoreError::Case::Execute, QStringLiteral("duplicate count overflow"));
    ++record->duplicateCount;
    record->lastUsedAt = now;
    m_structuredStore.upsert(*record);
    projection().update("duplicate_count = ?, last_used_at = ?", {record->duplicateCount, sqliteValue(now)},
                        record->id);
}

void LibraryDatabases::updateMetadata(const QUuid& id, const std::optional<QStringList>& tags,
                                      const std::optional<QString>& note)
{
    std::optional<ScreenshotRecord> record = m_structuredStore.record(id);
    if (!record)
        return;
    record->tags = tags.value_or(record->tags);
    record->note = note.value_or(record->note);
    m_structuredStore.upsert(*record);
    SQLiteTransaction transaction(projection().connection()); // row and indexes agree, whatever happens
    projection().update("tags_json = ?, note = ?",
                        {QString::fromUtf8(encodeTags(record->tags)), record->note}, id);
    projection().updateSearchIndex(*record);
    transaction.commit();
}

void LibraryDatabases::change(const QUuid& id, const std::function<void(ScreenshotRecord&)>& edit,
                              const QByteArray& assignments, const QList<SQLiteValue>& values)
{
    std::optional<ScreenshotRecord> record = m_structuredStore.record(id);
    if (!record)
        return;
    edit(*record);
    m_structuredStore.upsert(*record);
    projection().update(assignments, values, id);
}

RemovedItems LibraryDatabases::purgeTrash(std::optional<Date> olderThan, int most)
{
    return m_remover.removeTrash(projection(), olderThan, most);
}

RemovedItems LibraryDatabases::removeOldestPictures(qint64 limit, int most)
{
    return m_remover.removeOldestPictures(projection(), limit, most);
}

void LibraryDatabases::removeEverything()
{
    m_remover.removeEverything(projection());
    reopenProjection(); // the full-text engine remembers what it indexed last
}

QList<ScreenshotRecord> LibraryDatabases::search(const ListRequest& request, const std::stop_token& stop)
{
    if (stop.stop_requested())
        return {};
    try {
        return projection().page(request, stop);
    } catch (const StoreError&) {
        if (stop.stop_requested())
            return {};
        throw;
    }
}

void LibraryDatabases::reopenProjection()
{
    m_projection.reset();
    m_projection.emplace(m_projectionPath);
}

Projection& LibraryDatabases::projection()
{
    if (!m_projection)
        throw StoreError(StoreError::Case::Execute, QStringLiteral("Database is closed"));
    return *m_projection;
}

/// Undoes the first half of an insertion whose second half failed, whose error matters more.
void LibraryDatabases::removeQuietly(const QUuid& id) noexcept
{
    try {
        m_structuredStore.remove(id);
    } catch (const std::exception&) {
        qWarning("An item that could not be indexed stays in the record store until the next start");
    }
}

} // namespace tessary
