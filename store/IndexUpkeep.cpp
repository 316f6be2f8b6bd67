#include "store/IndexUpkeep.h"

#include "store/Projection.h"
#include "store/ProjectionReconciler.h"

namespace tessary {
namespace {

constexpr int kCheckedInAll = 60;
constexpr int kCheckedAtOnce = 3; // each is a query of some thirty grams
constexpr qint64 kIndexedAtOnce = 2000;
constexpr std::chrono::milliseconds kLongestPiece{20}; // searches wait meanwhile

} // namespace

void IndexUpkeep::startCheck()
{
    m_rowsToCheck = kCheckedInAll;
}

bool IndexUpkeep::doPiece(CoreDataScreenshotStore& records, Projection& projection)
{
    if (m_rowsToCheck > 0) {
        const qint64 last = projection.lastRow();
        for (int i = 0; i < kCheckedAtOnce && last > 0 && m_rowsToCheck > 0; ++i)
            checkRow(1 + m_chance.bounded(last), records, projection);
        m_rowsToCheck = last > 0 ? std::max(0, m_rowsToCheck - kCheckedAtOnce) : 0;
        return true;
    }
    if (m_isIndexing || projection.isIndexingDue())
        m_isIndexing = projection.indexGrams(kIndexedAtOnce, kLongestPiece);
    return m_isIndexing;
}

void IndexUpkeep::checkRow(qint64 row, CoreDataScreenshotStore& records, Projection& projection)
{
    if (!projection.hasRightSearchRow(row)) {
        qWarning("Full-text rows do not belong to their items; the index of the library is made anew");
        m_rowsToCheck = 0;
        ProjectionReconciler(records, projection).rebuild();
    } else if (!projection.hasRightGrams(row)) {
        qWarning("The index of the library is not right and made anew");
        m_rowsToCheck = 0;
        projection.forgetGrams();
    }
}

} // namespace tessary
