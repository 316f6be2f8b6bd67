#include "store/ProjectionReconciler.h"

#include "store/CoreDataScreenshotStore.h"
#include "store/Projection.h"
#include "store/ProjectionSchema.h"
#include "store/RecordColumns.h"
#include "store/RowSum.h"

namespace tessary {
namespace {

constexpr qsizetype kMostMended = 1000;

bool haveSameValues(const SQLiteStatement& left, const SQLiteStatement& right)
{
    for (int column = 0; column < kRecordColumnCount; ++column) {
        if (!left.hasSameValue(column, right, column))
            return false;
    }
    return true;
}

RowSum sumOf(SQLiteStatement rows)
{
    RowSum sum;
    while (rows.nextRow())
        sum.add(rows, kRecordColumnCount);
    return sum;
}

bool areSameItem(const SQLiteStatement& structured, const SQLiteStatement& projected)
{
    return haveSameValues(structured, projected) ||
           CoreDataScreenshotStore::decode(structured) == decodeProjectionRow(projected);
}

} // namespace

ProjectionReconciler::ProjectionReconciler(CoreDataScreenshotStore& structuredStore, Projection& projection)
    : m_structuredStore(structuredStore),
      m_projection(projection)
{
}

void ProjectionReconciler::reconcile()
{
    if (m_structuredStore.count() == 0 && m_projection.rowCount() > 0)
        adoptProjection();
    const Difference difference = haveEqualSums() ? Difference() : compare();
    const bool searchFits = hasAlignedSearchRows(m_projection.connection()) &&
                            m_projection.searchRowCount() == m_projection.rowCount();
    if (difference.isTooLarge || !searchFits)
        rebuild();
    else if (!difference.identifiers.isEmpty())
        mend(difference.identifiers);
}

void ProjectionReconciler::adoptProjection()
{
    SQLiteStatement rows = m_projection.rowsInStoredOrder();
    m_structuredStore.adopt([&rows]() -> std::optional<ScreenshotRecord> {
        if (!rows.nextRow())
            return std::nullopt;
        return decodeProjectionRow(rows);
    });
}

bool ProjectionReconciler::haveEqualSums()
{
    return m_structuredStore.count() == m_projection.rowCount() &&
           sumOf(m_structuredStore.rowsInStoredOrder()) == sumOf(m_projection.rowsInStoredOrder());
}

ProjectionReconciler::Difference ProjectionReconciler::compare()
{
    Difference difference;
    SQLiteStatement structured = m_structuredStore.rowsInIdentifierOrder();
    SQLiteStatement projected = m_projection.rowsInIdentifierOrder();
    bool hasStructured = structured.nextRow();
    bool hasProjected = projected.nextRow();
    while (hasStructured || hasProjected) {
        const QByteArrayView left = hasStructured ? structured.bytes(0) : QByteArrayView();
        const QByteArrayView right = hasProjected ? projected.bytes(0) : QByteArrayView();
        const int order = !hasStructured ? 1 : !hasProjected ? -1 : left.compare(right);
        if (order != 0 || !areSameItem(structured, projected))
            difference.identifiers.append(QString::fromUtf8(order <= 0 ? left : right));
        if (difference.identifiers.size() > kMostMended) {
            difference.isTooLarge = true;
            return difference;
        }
        if (order <= 0)
            hasStructured = structured.nextRow();
        if (order >= 0)
            hasProjected = projected.nextRow();
    }
    return difference;
}

void ProjectionReconciler::mend(const QStringList& identifiers)
{
    SQLiteTransaction transaction(m_projection.connection());
    // All go before any comes back: one may hold the content hash of another.
    for (const QString& id : identifiers)
        m_projection.remove(id);
    for (const QString& id : identifiers) {
        const std::optional<ScreenshotRecord> record = m_structuredStore.record(QUuid::fromString(id));
        if (record && m_projection.insertProjection(*record))
            m_projection.updateSearchIndex(*record);
    }
    transaction.commit();
}

void ProjectionReconciler::rebuild()
{
    SQLiteTransaction transaction(m_projection.connection());
    m_projection.removeRows();
    SQLiteStatement rows = m_structuredStore.rowsInStoredOrder();
    while (rows.nextRow()) {
        const ScreenshotRecord record = CoreDataScreenshotStore::decode(rows);
        if (m_projection.insertProjection(record))
            m_projection.updateSearchIndex(record);
    }
    markSearchRowsAligned(m_projection.connection());
    transaction.commit();
}

} // namespace tessary
