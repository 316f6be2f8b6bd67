#pragma once

#include <QRandomGenerator>

namespace tessary {

class CoreDataScreenshotStore;
class Projection;

/// Completes what searches rely on besides the items themselves, and looks now and then whether it is right.
/// In short pieces, between which others get the store's lane. Used on that lane.
class IndexUpkeep {
public:
    /// Has some rows looked at, chosen by chance.
    void startCheck();
    /// @returns whether there is more to do. @throws StoreError, PersistenceError; what was there stays.
    bool doPiece(CoreDataScreenshotStore& records, Projection& projection);

private:
    void checkRow(qint64 row, CoreDataScreenshotStore& records, Projection& projection);

    int m_rowsToCheck = 0;
    bool m_isIndexing = false;
    QRandomGenerator m_chance = QRandomGenerator::securelySeeded();
};

} // namespace tessary
