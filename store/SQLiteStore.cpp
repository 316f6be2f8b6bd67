#include "store/SQLiteStore.h"

#include "base/FreedMemory.h"
#include "store/CoreDataScreenshotStore.h"
#include "store/IndexUpkeep.h"
#include "store/ItemRemover.h"
#include "store/LibraryComparison.h"
#include "store/Projection.h"
#include "store/ProjectionReconciler.h"
#include "store/StoreError.h"
#include "store/TagsCoding.h"

#include <QFileInfo>
#include <QScopeGuard>

#include <limits>

namespace tessary {
namespace {

constexpr qsizetype kLongText = 256 * 1024; // UTF-16 units; indexing one takes many times its size

} // namespace

/// Both databases and what has to be done to them together. On the lane only.
class SQLiteStore::Databases {
public:
    explicit Databases(const QString& path)
        : m_structuredStore(path),
          m_remover(m_structuredStore),
          m_projectionPath(projectionPath(path)),
          m_projection(std::in_place, m_projectionPath)
    {
    }

    [[nodiscard]] CoreDataScreenshotStore& structuredStore() { return m_structuredStore; }

    bool insert(const ScreenshotRecord& record)
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

    [[nodiscard]] ProjectionReconciler reconciler() { return {m_structuredStore, projection()}; }

    void registerDuplicate(const QString& contentHash, Date now)
    {
        std::optional<ScreenshotRecord> record = m_structuredStore.record(contentHash);
        if (!record)
            return;
        if (record->duplicateCount == std::numeric_limits<qint64>::max())
            throw StoreError(StoreError::Case::Execute, QStringLiteral("duplicate count overflow"));
        ++record->duplicateCount;
        record->lastUsedAt = now;
        m_structuredStore.upsert(*record);
        projection().update("duplicate_count = ?, last_used_at = ?",
                            {record->duplicateCount, sqliteValue(now)}, record->id);
    }

    /// @param tags, note what is to be replaced; absent stays.
    void updateMetadata(const QUuid& id, const std::optional<QStringList>& tags,
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

    /// Changes the item in the store of record, then the given columns of its row.
    void change(const QUuid& id, const std::function<void(ScreenshotRecord&)>& edit,
                const QByteArray& assignments, const QList<SQLiteValue>& values)
    {
        std::optional<ScreenshotRecord> record = m_structuredStore.record(id);
        if (!record)
            return;
        edit(*record);
        m_structuredStore.upsert(*record);
        projection().update(assignments, values, id);
    }

    RemovedItems purgeTrash(std::optional<Date> olderThan, int most)
    {
        return m_remover.removeTrash(projection(), olderThan, most);
    }

    RemovedItems removeOldestPictures(qint64 limit, int most)
    {
        return m_remover.removeOldestPictures(projection(), limit, most);
    }

    void removeEverything()
    {
        m_remover.removeEverything(projection());
        reopenProjection(); // the full-text engine remembers what it indexed last
    }

    LibraryCounts counts() { return projection().counts(); }

    QList<ScreenshotRecord> search(const ListRequest& request, const std::stop_token& stop)
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

    LibraryFacets facets() { return projection().facets(); }

    void startIndexCheck() { m_upkeep.startCheck(); }
    bool keepUpIndex() { return m_upkeep.doPiece(m_structuredStore, projection()); }

    /// Opens the projection anew. The full-text engine keeps what it last indexed, and tables as large as
    /// that called for, as long as its connection lives.
    void reopenProjection()
    {
        m_projection.reset();
        m_projection.emplace(m_projectionPath);
    }

private:
    [[nodiscard]] Projection& projection()
    {
        if (!m_projection)
            throw StoreError(StoreError::Case::Execute, QStringLiteral("Database is closed"));
        return *m_projection;
    }

    /// Undoes the first half of an insertion whose second half failed, whose error matters more.
    void removeQuietly(const QUuid& id) noexcept
    {
        try {
            m_structuredStore.remove(id);
        } catch (const std::exception&) {
            qWarning("An item that could not be indexed stays in the record store until the next start");
        }
    }

    CoreDataScreenshotStore m_structuredStore;
    ItemRemover m_remover;
    IndexUpkeep m_upkeep;
    QString m_projectionPath;
    std::optional<Projection> m_projection; // absent when it could not be opened again
};

SQLiteStore::SQLiteStore(QString path)
    : m_path(std::move(path)),
      m_mayWrite(std::make_unique<Milestone>()),
      m_lane(QStringLiteral("tessary.store"))
{
    m_mayWrite->reach();
}

SQLiteStore::~SQLiteStore()
{
    // Closing a database writes its log back; that, too, belongs to the lane.
    m_lane.postDetached([this] { m_databases.reset(); });
}

QString SQLiteStore::projectionPath(const QString& databasePath)
{
    return QFileInfo(databasePath).path() + QStringLiteral("/Tessary.metadata.sqlite3");
}

QCoro::Task<std::unique_ptr<SQLiteStore>> SQLiteStore::open(QString databasePath)
{
    std::unique_ptr<SQLiteStore> store(new SQLiteStore(databasePath));
    auto opening = store->m_lane.post([self = store.get(), databasePath] {
        self->m_databases = std::make_unique<Databases>(databasePath);
    });
    co_await opening;
    co_return store;
}

QCoro::Task<bool> SQLiteStore::contains(QString contentHash)
{
    auto work =
        m_lane.post([this, contentHash] { return m_databases->structuredStore().contains(contentHash); });
    co_return co_await work;
}

QCoro::Task<std::optional<QUuid>> SQLiteStore::identifier(QString contentHash)
{
    auto work =
        m_lane.post([this, contentHash] { return m_databases->structuredStore().identifier(contentHash); });
    co_return co_await work;
}

QCoro::Task<bool> SQLiteStore::containsRecord(QUuid id)
{
    auto work = m_lane.post([this, id] { return m_databases->structuredStore().containsRecord(id); });
    co_return co_await work;
}

QCoro::Task<QList<QUuid>> SQLiteStore::unknownAmong(QList<QUuid> ids)
{
    auto work = m_lane.post([this, ids] {
        QList<QUuid> unknown = ids;
        unknown.removeIf(
            [this](const QUuid& id) { return m_databases->structuredStore().containsRecord(id); });
        return unknown;
    });
    co_return co_await work;
}

QCoro::Task<std::optional<ScreenshotRecord>> SQLiteStore::record(QUuid id)
{
    auto work = m_lane.post([this, id] { return m_databases->structuredStore().record(id); });
    co_return co_await work;
}

QCoro::Task<QList<ScreenshotRecord>> SQLiteStore::page(QUuid after, int limit)
{
    auto work =
        m_lane.post([this, after, limit] { return m_databases->structuredStore().page(after, limit); });
    co_return co_await work;
}

QCoro::Task<bool> SQLiteStore::insert(ScreenshotRecord record)
{
    const Milestone::Wait turn = m_mayWrite->reached();
    co_await turn;
    auto work = m_lane.post([this, record] { return m_databases->insert(record); });
    const bool wasInserted = co_await work;
    if (record.textContent.size() > kLongText)
        m_lane.postDetached([this] { forgetLongText(); });
    m_lane.postDetached([this] { keepUpIndex(); });
    co_return wasInserted;
}

void SQLiteStore::keepUpIndex() noexcept
{
    if (m_isUpkeepWaiting || !m_databases)
        return; // without databases the library is being closed
    try {
        m_isUpkeepWaiting = m_databases->keepUpIndex();
    } catch (const std::exception& error) {
        qWarning("The index of the library is not complete: %s", error.what());
    }
    if (!m_isUpkeepWaiting)
        return;
    m_lane.postDetached([this] {
        m_isUpkeepWaiting = false;
        keepUpIndex();
        if (!m_isUpkeepWaiting)
            returnFreedMemory();
    });
}

void SQLiteStore::forgetLongText() noexcept
{
    try {
        m_databases->reopenProjection();
    } catch (const std::exception& error) {
        qWarning("The index of the library could not be opened again: %s", error.what());
    }
    returnFreedMemory();
}

QCoro::Task<bool> SQLiteStore::reconcileProjection(std::stop_token stop)
{
    m_mayWrite = std::make_unique<Milestone>();
    const auto letWrite = qScopeGuard([this] { m_mayWrite->reach(); });
    auto counting = m_lane.post([this] { return m_databases->reconciler().changeCount(); });
    const qint64 changeCount = co_await counting;
    LibraryComparison comparison(m_path, projectionPath(m_path));
    const QCoro::Task<ProjectionReconciler::Outcome> comparing = comparison.compare(stop);
    const ProjectionReconciler::Outcome outcome = co_await comparing;
    if (stop.stop_requested())
        co_return false;
    auto work = m_lane.post([this, outcome, changeCount] {
        const bool hasToChange = m_databases->reconciler().reconcile(outcome, changeCount);
        m_databases->startIndexCheck();
        return hasToChange;
    });
    const bool wasChanged = co_await work;
    m_lane.postDetached(&returnFreedMemory);
    m_lane.postDetached([this] { keepUpIndex(); });
    co_return wasChanged;
}

QCoro::Task<> SQLiteStore::registerDuplicate(QString contentHash, Date now)
{
    const Milestone::Wait turn = m_mayWrite->reached();
    co_await turn;
    auto work = m_lane.post([this, contentHash, now] { m_databases->registerDuplicate(contentHash, now); });
    co_await work;
}

QCoro::Task<> SQLiteStore::updateMetadata(QUuid id, QStringList tags, QString note)
{
    const Milestone::Wait turn = m_mayWrite->reached();
    co_await turn;
    auto work = m_lane.post([this, id, tags, note] { m_databases->updateMetadata(id, tags, note); });
    co_await work;
}

QCoro::Task<> SQLiteStore::setTags(QUuid id, QStringList tags)
{
    const Milestone::Wait turn = m_mayWrite->reached();
    co_await turn;
    auto work = m_lane.post([this, id, tags] { m_databases->updateMetadata(id, tags, std::nullopt); });
    co_await work;
}

QCoro::Task<> SQLiteStore::setNote(QUuid id, QString note)
{
    const Milestone::Wait turn = m_mayWrite->reached();
    co_await turn;
    auto work = m_lane.post([this, id, note] { m_databases->updateMetadata(id, std::nullopt, note); });
    co_await work;
}

QCoro::Task<> SQLiteStore::setFavorite(QUuid id, bool isFavorite)
{
    const Milestone::Wait turn = m_mayWrite->reached();
    co_await turn;
    auto work = m_lane.post([this, id, isFavorite] {
        m_databases->change(id, [&](ScreenshotRecord& record) { record.isFavorite = isFavorite; },
                            "is_favorite = ?", {sqliteValue(isFavorite)});
    });
    co_await work;
}

QCoro::Task<> SQLiteStore::setPinned(QUuid id, bool isPinned)
{
    const Milestone::Wait turn = m_mayWrite->reached();
    co_await turn;
    auto work = m_lane.post([this, id, isPinned] {
        m_databases->change(id, [&](ScreenshotRecord& record) { record.isPinned = isPinned; },
                            "is_pinned = ?", {sqliteValue(isPinned)});
    });
    co_await work;
}

QCoro::Task<> SQLiteStore::markUsed(QUuid id, Date at)
{
    const Milestone::Wait turn = m_mayWrite->reached();
    co_await turn;
    auto work = m_lane.post([this, id, at] {
        m_databases->change(id, [&](ScreenshotRecord& record) { record.lastUsedAt = at; }, "last_used_at = ?",
                            {sqliteValue(at)});
    });
    co_await work;
}

QCoro::Task<> SQLiteStore::moveToTrash(QUuid id, Date at)
{
    const Milestone::Wait turn = m_mayWrite->reached();
    co_await turn;
    auto work = m_lane.post([this, id, at] {
        const auto edit = [&](ScreenshotRecord& record) {
            record.isDeleted = true;
            record.deletedAt = at;
        };
        m_databases->change(id, edit, "is_deleted = 1, deleted_at = ?", {sqliteValue(at)});
    });
    co_await work;
}

QCoro::Task<QList<ScreenshotRecord>> SQLiteStore::search(ListRequest request, std::stop_token stop)
{
    auto work = m_lane.post([this, request, stop] { return m_databases->search(request, stop); });
    co_return co_await work;
}

QCoro::Task<LibraryFacets> SQLiteStore::facets()
{
    auto work = m_lane.post([this] { return m_databases->facets(); });
    co_return co_await work;
}

QCoro::Task<RemovedItems> SQLiteStore::purgeTrash(std::optional<Date> olderThan, int most)
{
    const Milestone::Wait turn = m_mayWrite->reached();
    co_await turn;
    auto work = m_lane.post([this, olderThan, most] { return m_databases->purgeTrash(olderThan, most); });
    co_return co_await work;
}

QCoro::Task<RemovedItems> SQLiteStore::removeOldestPictures(qint64 limit, int most)
{
    const Milestone::Wait turn = m_mayWrite->reached();
    co_await turn;
    auto work = m_lane.post([this, limit, most] { return m_databases->removeOldestPictures(limit, most); });
    co_return co_await work;
}

QCoro::Task<> SQLiteStore::removeEverything()
{
    const Milestone::Wait turn = m_mayWrite->reached();
    co_await turn;
    auto work = m_lane.post([this] { m_databases->removeEverything(); });
    co_await work;
    m_lane.postDetached(&returnFreedMemory);
}

QCoro::Task<LibraryCounts> SQLiteStore::counts()
{
    auto work = m_lane.post([this] { return m_databases->counts(); });
    co_return co_await work;
}

} // namespace tessary
