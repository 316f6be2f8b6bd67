#pragma once

#include <QtGlobal>

namespace tessary {

/// Where a search changes its way. The same page comes out whatever they are; tests make them small, so that
/// small libraries are searched in every way.
struct SearchLimits {
    int rowsBetweenLooks = 100; ///< Rows that are tested before it is asked whether enough of them match.
    int mostTested = 6000;      ///< Rows that are tested one after the other before the index is asked.
    /// Of so many rows of the library one at most is tested: the index of a small one is soon asked.
    int rowsPerTested = 50;
    qsizetype mostSorted = 5000;  ///< Candidates that are put in order themselves instead of being met in it.
    qsizetype mostListed = 60000; ///< Rows that one word is asked for, unless every word has more.
    qint64 mostUnindexed = 2000;  ///< Rows not yet indexed that are taken for candidates.
    qint64 rowsIndexedAtOnce = 256; ///< New rows wait until they are so many.
};

} // namespace tessary
