#pragma once

#include <QStringList>

namespace tessary {

class CoreDataScreenshotStore;
class Projection;

/// Brings the projection in line with the store of record, in constant memory. Used once at start-up, on
/// the store's lane.
///
/// Both stores are read once in the order in which they lie on the disk; equal sums of their raw values are
/// the end of it. Otherwise they are walked side by side in the order of their identifiers, comparing raw
/// values and only decoding rows that differ in them. A handful of differing items, as a crash between the
/// two commits leaves, is mended one by one; anything more, or a full-text table that does not fit, is
/// rebuilt. That keeps the order of the store of record, the order of arrival: a search, which goes through
/// the items from the newest on, then reads the disk in one direction and each page of it once.
class ProjectionReconciler {
public:
    ProjectionReconciler(CoreDataScreenshotStore& structuredStore, Projection& projection);

    /// @throws StoreError, PersistenceError; the projection is then as it was.
    void reconcile();
    /// Makes the projection anew from the store of record, whatever it holds. @throws the same.
    void rebuild();

private:
    struct Difference {
        QStringList identifiers; ///< Spelled as in the stores; at most `kMostMended` of them.
        bool isTooLarge = false;
    };

    void adoptProjection();
    [[nodiscard]] bool haveEqualSums();
    [[nodiscard]] Difference compare();
    void mend(const QStringList& identifiers);

    CoreDataScreenshotStore& m_structuredStore;
    Projection& m_projection;
};

} // namespace tessary
