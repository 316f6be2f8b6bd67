#pragma once

#include "app/SpacedWork.h"
#include "app/StorageMeter.h"
#include "search/LibraryChange.h"
#include "store/AppPaths.h"
#include "store/RemovedItems.h"

#include <QObject>

#include <qcoro/qcorotask.h>

#include <functional>
#include <optional>

namespace tessary {

class AppSettings;
class FrontmostAppTracker;
class LibraryFiles;
class SQLiteStore;
class ScreenshotImporter;

/// Keeps the library in bounds, measures it, and clears it. Main thread only; databases and files are worked
/// on elsewhere, 200 items at a time, so that a copy made meanwhile waits for one such piece at most. Rows go
/// before their files. A stop of the flows takes effect between two pieces.
class StorageMaintenance : public QObject {
    Q_OBJECT
public:
    enum class Trash {
        Expired, ///< In the trash for longer than the settings let it be.
        Everything
    };

    StorageMaintenance(const AppSettings& settings, Clock& clock, LibraryFiles& files, FlowSet& flows);

    /// Before this, nothing can be measured.
    void setPaths(const AppPaths& paths) { m_paths = paths; }
    /// Before this, all but measuring does nothing. They outlive the flows.
    void setLibrary(SQLiteStore& store, ScreenshotImporter& importer, FrontmostAppTracker& tracker);

    /// Bytes allocated by the library when it was last measured.
    [[nodiscard]] qint64 storageBytes() const { return m_storageBytes; }

    /// Removes what has been in the trash for too long; a failure is told by `failed`.
    [[nodiscard]] QCoro::Task<> purgeExpiredTrash();
    /// Removes for good what is in the trash. @returns how many items that were.
    /// @throws StoreError, PersistenceError; what was removed before stays removed.
    [[nodiscard]] QCoro::Task<qint64> purgeTrash(Trash which);
    /// If the settings say so, removes for good the oldest pictures that are neither favourite nor pinned,
    /// until the items outside the trash take no more than the limit; a failure is told by `failed`. Two
    /// cleanups at once are one.
    [[nodiscard]] QCoro::Task<> enforceStorageLimit();
    /// Measures the library now, or again once the present measurement has ended.
    void refreshStorageUsage();
    [[nodiscard]] QCoro::Task<StorageUsage> measureUsage();
    /// Removes every item, every file of an item and the history of programs. What is being imported
    /// meanwhile does not come back. A failure is told by `failed`; what was removed before stays removed.
    [[nodiscard]] QCoro::Task<> clearAllData();

    /// Once at start-up, before anything is imported: removes the files of items that an earlier run removed
    /// without getting to their files. A failure is told by `failed`.
    [[nodiscard]] QCoro::Task<> finishRemovals();

    /// To be told of imports. Bursts lead to few measurements and cleanups.
    void clipboardImported() { m_measurement.request(); }
    void fileImported();

Q_SIGNALS:
    void storageBytesChanged();
    void libraryChanged(const tessary::LibraryChange& change);
    /// @param message the sentence for the person.
    void failed(const QString& message);

private:
    using Piece = std::function<QCoro::Task<RemovedItems>()>;

    QCoro::Task<> measure();
    QCoro::Task<> cleanUp();
    QCoro::Task<qint64> removePieces(Piece piece);
    QCoro::Task<> beginRemoval();
    QCoro::Task<> endRemoval();
    QCoro::Task<> removeStrayFiles();
    QCoro::Task<> clear();
    [[nodiscard]] Date trashCutOff() const;
    [[nodiscard]] qint64 limitBytes() const;
    [[nodiscard]] bool isStopped() const { return m_flows.stopToken().stop_requested(); }

    const AppSettings& m_settings;
    Clock& m_clock;
    LibraryFiles& m_files;
    FlowSet& m_flows;
    std::optional<AppPaths> m_paths;
    SQLiteStore* m_store = nullptr; // null without a library, as the next two
    ScreenshotImporter* m_importer = nullptr;
    FrontmostAppTracker* m_tracker = nullptr;
    qint64 m_storageBytes = 0;
    int m_removals = 0; // that go on
    StorageMeter m_meter;
    SpacedWork m_measurement;
    SpacedWork m_cleanup;
};

} // namespace tessary
