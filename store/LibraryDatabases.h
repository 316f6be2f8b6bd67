#pragma once

#include "store/CoreDataScreenshotStore.h"
#include "store/IndexUpkeep.h"
#include "store/ItemRemover.h"
#include "store/Projection.h"
#include "store/ProjectionReconciler.h"

#include <functional>
#include <optional>
#include <stop_token>

namespace tessary {

/// The store of record and the projection, and what has to be done to them together: first to the one, then
/// to the other. Used from the store's lane; throws StoreError and PersistenceError.
class LibraryDatabases {
public:
    /// Opens both, creating what is missing. @param path of the store of record.
    LibraryDatabases(const QString& path, QString projectionPath);

    [[nodiscard]] CoreDataScreenshotStore& structuredStore() { return m_structuredStore; }
    [[nodiscard]] ProjectionReconciler reconciler() { return {m_structuredStore, projection()}; }

    /// @returns false, with neither changed, when an item with that content is present already.
    bool insert(const ScreenshotRecord& record);
    void registerDuplicate(const QString& contentHash, Date now);
    /// @param tags, note what is to be replaced; absent stays.
    void updateMetadata(const QUuid& id, const std::optional<QStringList>& tags,
                        const std::optional<QString>& note);
    /// Changes the item in the store of record, then the given columns of its row, which no search looks
    /// into.
    void change(const QUuid& id, const std::function<void(ScreenshotRecord&)>& edit,
                const QByteArray& assignments, const QList<SQLiteValue>& values);
    RemovedItems purgeTrash(std::optional<Date> olderThan, int most);
    RemovedItems removeOldestPictures(qint64 limit, int most);
    void removeEverything();

    [[nodiscard]] LibraryCounts counts() { return projection().counts(); }
    [[nodiscard]] LibraryFacets facets() { return projection().facets(); }
    /// Empty once a stop is requested.
    [[nodiscard]] QList<ScreenshotRecord> search(const ListRequest& request, const std::stop_token& stop);

    void startIndexCheck() { m_upkeep.startCheck(); }
    /// @returns whether there is more to do.
    bool keepUpIndex() { return m_upkeep.doPiece(m_structuredStore, projection()); }
    /// Opens the projection anew. The full-text engine keeps what it last indexed, and tables as large as
    /// that called for, as long as its connection lives.
    void reopenProjection();

private:
    [[nodiscard]] Projection& projection();
    void removeQuietly(const QUuid& id) noexcept;

    CoreDataScreenshotStore m_structuredStore;
    ItemRemover m_remover;
    IndexUpkeep m_upkeep;
    QString m_projectionPath;
    std::optional<Projection> m_projection; ///< Absent when it could not be opened again.
};

} // namespace tessary
