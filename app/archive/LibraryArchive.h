#pragma once

#include "base/KeyedGate.h"
#include "base/SerialLane.h"
#include "capture/ImportEpochs.h"
#include "capture/ImportJournal.h"
#include "store/AppPaths.h"
#include "store/ScreenshotRecord.h"

#include <qcoro/qcorotask.h>

#include <stop_token>

namespace tessary {

class ArchiveReader;
class SQLiteStore;

/// Takes the whole library out into a folder and back. To be called on the main thread; file work happens on
/// its lane, so that capturing goes on meanwhile.
class LibraryArchive {
public:
    struct Exported {
        qint64 items = 0;
        qint64 files = 0;
        qint64 missingFiles = 0; ///< That items speak of and that are not in the library.
    };
    struct Restored {
        qint64 added = 0;
        qint64 repeated = 0; ///< Items or contents that the library held already.
        qint64 missingFiles = 0;
        QList<qint64> unreadableLines; ///< Line numbers, from 1; the first few.
        qint64 unreadable = 0;
    };

    /// @param epochs end when the library is cleared; what is being restored then is given up.
    LibraryArchive(AppPaths paths, SQLiteStore& store, ImportEpochs& epochs);

    /// Every item, trash included, as it is when its turn comes. @param folder absolute; new or empty.
    /// When it fails, nothing of it is left. @throws ArchiveError, FileError, StoreError, PersistenceError.
    [[nodiscard]] QCoro::Task<Exported> exportTo(QString folder, std::stop_token stop);
    /// Adds the items of an exported library that this one does not hold. When it fails, what was added
    /// stays, and a second time goes on from there. One at a time, the others wait. @throws as above.
    [[nodiscard]] QCoro::Task<Restored> restoreFrom(QString folder, std::stop_token stop);

private:
    enum class Taken { Added, Repeated };

    QCoro::Task<Taken> take(const ArchiveReader& archive, ScreenshotRecord listed, ImportEpochs::Epoch epoch,
                            Restored& result);
    QCoro::Task<> mend(const ArchiveReader& archive, ScreenshotRecord listed);
    QCoro::Task<> settle(QUuid id, bool isListed);

    AppPaths m_paths;
    SQLiteStore& m_store;
    ImportJournal m_journal;
    KeyedGate m_restores;
    ImportEpochs& m_epochs;
    SerialLane m_lane;
};

} // namespace tessary
