#pragma once

#include "store/RowSum.h"

#include <QStringList>

namespace tessary {

class CoreDataScreenshotStore;
class Projection;

/// Brings the projection in line with the store of record, in constant memory. Used once at start-up, on
/// the store's lane; what only reads also elsewhere.
///
/// Both stores are read once in the order in which they lie on the disk; equal sums of their raw values are
/// the end of it (see `LibraryComparison`). Otherwise they are walked side by side in the order of their
/// identifiers, comparing raw values and only decoding rows that differ in them. A handful of differing
/// items, as a crash between the two commits leaves, is mended one by one; anything more, or a full-text
/// table that does not fit, is rebuilt. That keeps the order of the store of record, the order of arrival: a
/// search, which goes through the items from the newest on, then reads the disk in one direction and each
/// page of it once.
class ProjectionReconciler {
public:
    ProjectionReconciler(CoreDataScreenshotStore& structuredStore, Projection& projection);

    /// What is compared first of a projection.
    struct Reading {
        RowSum sum;
        bool hasItsSearchRows = false; ///< As many as items, with their row ids.

        [[nodiscard]] bool isInStepWith(const RowSum& records) const
        {
            return hasItsSearchRows && sum == records;
        }
    };
    /// Of a comparison that was made elsewhere.
    enum class Outcome {
        InStep,
        Different,
        Unknown, ///< Something could not be read.
    };

    /// Both read everything, by any connection to the file. @throws StoreError.
    [[nodiscard]] static RowSum readRecords(SQLiteConnection& connection);
    [[nodiscard]] static Reading readProjection(SQLiteConnection& connection);

    /// Grows with every change of either store, by whomever.
    [[nodiscard]] qint64 changeCount();
    /// @returns whether the projection had to be changed. @throws StoreError, PersistenceError; the
    /// projection is then as it was.
    bool reconcile();
    /// The same without reading everything again. @param changeCountThen from before the comparison: what
    /// was changed since, it may have missed.
    bool reconcile(Outcome outcome, qint64 changeCountThen);
    /// Makes the projection anew from the store of record, whatever it holds. @throws the same.
    void rebuild();

private:
    struct Difference {
        QStringList identifiers; ///< Spelled as in the stores; at most `kMostMended` of them.
        bool isTooLarge = false;
    };

    bool mendDifferences();
    void adoptProjection();
    [[nodiscard]] Difference compare();
    void mend(const QStringList& identifiers);

    CoreDataScreenshotStore& m_structuredStore;
    Projection& m_projection;
};

} // namespace tessary
