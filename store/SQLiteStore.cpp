#include "store/SQLiteStore.h"

#include "base/FreedMemory.h"
#include "store/LibraryComparison.h"
#include "store/LibraryDatabases.h"

#include <QFileInfo>
#include <QScopeGuard>

namespace tessary {
namespace {

constexpr qsizetype kLongText = 256 * 1024; // UTF-16 units; indexing one takes many times its size

} // namespace

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
        self->m_databases = std::make_unique<LibraryDatabases>(databasePath, projectionPath(databasePath));
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
        const bool wasChanged = m_databases->reconciler().reconcile(outcome, changeCount);
        m_databases->startIndexCheck();
        return wasChanged;
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
