#pragma once

#include "base/Milestone.h"
#include "base/SerialLane.h"
#include "search/ListRequest.h"
#include "store/LibraryCounts.h"
#include "store/RemovedItems.h"
#include "store/ScreenshotRecord.h"

#include <qcoro/qcorotask.h>

#include <memory>
#include <stop_token>

namespace tessary {

class LibraryDatabases;

/// The one way to the library: keeps the store of record and the projection in step.
///
/// An actor: every operation is one piece of work on its lane, so each runs to completion and two never
/// interleave. To be called on the main thread. All throw StoreError or PersistenceError. Operations on an
/// item that does not exist do nothing.
class SQLiteStore {
public:
    ~SQLiteStore();

    /// Opens both databases, creating what is missing. @param databasePath the store of record's file; the
    /// projection lies beside it. @throws StoreError, PersistenceError.
    [[nodiscard]] static QCoro::Task<std::unique_ptr<SQLiteStore>> open(QString databasePath);
    /// Where the projection of that store of record lies.
    [[nodiscard]] static QString projectionPath(const QString& databasePath);

    [[nodiscard]] QCoro::Task<bool> contains(QString contentHash);
    /// The item that holds the content, if any does.
    [[nodiscard]] QCoro::Task<std::optional<QUuid>> identifier(QString contentHash);
    [[nodiscard]] QCoro::Task<bool> containsRecord(QUuid id);
    /// Those of the ids that no item has.
    [[nodiscard]] QCoro::Task<QList<QUuid>> unknownAmong(QList<QUuid> ids);
    [[nodiscard]] QCoro::Task<std::optional<ScreenshotRecord>> record(QUuid id);
    /// Up to `limit` items, trash included, in the order of their identifiers. @param after the last item of
    /// the page before; a null identifier for the first page.
    [[nodiscard]] QCoro::Task<QList<ScreenshotRecord>> page(QUuid after, int limit);
    /// @returns false, with neither store changed, when an item with that content is present already.
    [[nodiscard]] QCoro::Task<bool> insert(ScreenshotRecord record);
    /// Brings the projection in line with the store of record; once, before anything is changed. Changes
    /// that are asked for meanwhile wait; questions are answered from the projection as it is.
    /// @returns whether the projection had to be changed. When `stop` is requested it may be left as it is.
    [[nodiscard]] QCoro::Task<bool> reconcileProjection(std::stop_token stop = {});
    /// The same content was captured again at that time.
    [[nodiscard]] QCoro::Task<> registerDuplicate(QString contentHash, Date now);
    [[nodiscard]] QCoro::Task<> updateMetadata(QUuid id, QStringList tags, QString note);
    [[nodiscard]] QCoro::Task<> setTags(QUuid id, QStringList tags);
    [[nodiscard]] QCoro::Task<> setNote(QUuid id, QString note);
    [[nodiscard]] QCoro::Task<> setFavorite(QUuid id, bool isFavorite);
    [[nodiscard]] QCoro::Task<> setPinned(QUuid id, bool isPinned);
    [[nodiscard]] QCoro::Task<> markUsed(QUuid id, Date at);
    [[nodiscard]] QCoro::Task<> moveToTrash(QUuid id, Date at);
    /// Removes for good what has been in the trash since before the date, or without a date whatever is in
    /// it: at most that many items, all of them or, on an error, none. The caller deletes their files.
    [[nodiscard]] QCoro::Task<RemovedItems> purgeTrash(std::optional<Date> olderThan, int most);
    /// The same for the oldest pictures that are neither favourite nor pinned, for as long as the items
    /// outside the trash take more bytes than the limit.
    [[nodiscard]] QCoro::Task<RemovedItems> removeOldestPictures(qint64 limit, int most);
    /// Removes every item for good, all of them or, on an error, none, and lets the databases shrink.
    [[nodiscard]] QCoro::Task<> removeEverything();
    [[nodiscard]] QCoro::Task<LibraryCounts> counts();

    /// One page of a list. When `stop` is requested the query is given up, before it begins or in its
    /// middle, and the page is empty; no other operation is touched by it.
    [[nodiscard]] QCoro::Task<QList<ScreenshotRecord>> search(ListRequest request, std::stop_token stop = {});
    /// Source applications and tags of the items outside the trash, each list sorted.
    [[nodiscard]] QCoro::Task<LibraryFacets> facets();

private:
    explicit SQLiteStore(QString path);

    /// On the lane: gives back the memory that indexing a long text took.
    void forgetLongText() noexcept;
    /// On the lane: a piece of the index's upkeep, and the next one behind what waits by then.
    void keepUpIndex() noexcept;

    QString m_path;
    std::unique_ptr<Milestone> m_mayWrite;         // reached but while the projection is compared
    std::unique_ptr<LibraryDatabases> m_databases; // touched only on the lane
    bool m_isUpkeepWaiting = false;                // likewise; the next piece is among what waits
    SerialLane m_lane;
};

} // namespace tessary
