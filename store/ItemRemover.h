#pragma once

#include "base/Date.h"
#include "store/RemovedItems.h"

#include <optional>

namespace tessary {

class CoreDataScreenshotStore;
class Projection;
struct ItemFiles;

/// Takes items out of both databases for good, a number of them in one piece that happens as a whole or not
/// at all. On the store's lane; blocks on the disk; throws StoreError and PersistenceError.
///
/// The projection is committed first: whatever comes in between, the record store then still has the items
/// and the next start lists them again. The other way round a record store that became empty would be taken
/// for one that was never filled.
class ItemRemover {
public:
    explicit ItemRemover(CoreDataScreenshotStore& records) : m_records(records) {}

    /// What has been in the trash since before the date; without one, whatever is in it.
    RemovedItems removeTrash(Projection& projection, std::optional<Date> olderThan, int most);
    /// Pictures that are neither favourite nor pinned nor in the trash, oldest first, for as long as the
    /// items outside the trash take more bytes than the limit.
    RemovedItems removeOldestPictures(Projection& projection, qint64 limit, int most);
    /// Everything, and what is left of it in the databases' files.
    void removeEverything(Projection& projection);

private:
    [[nodiscard]] qint64 totalSize();
    RemovedItems remove(Projection& projection, const QList<ItemFiles>& items);
    [[nodiscard]] QStringList filesOnlyOf(const ItemFiles& item, const QSet<QString>& foreignFiles);

    /// The sum as of a state of the records; looking at each of them for every piece would take longer than
    /// the piece.
    struct KnownSize {
        qint64 bytes;
        qint64 asOfChange;
    };

    CoreDataScreenshotStore& m_records;
    std::optional<KnownSize> m_size;
};

} // namespace tessary
