#include "store/ProjectionReconciler.h"

#include "store/CoreDataScreenshotStore.h"
#include "store/Projection.h"
#include "store/ProjectionSchema.h"
#include "store/RecordColumns.h"

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

bool areSameItem(const SQLiteStatement& structured, const SQLiteStatement& projected)
{
    return haveSameValues(structured, projected) ||
           CoreDataScreenshotStore::decode(structured) == decodeProjectionRow(projected);
}

/// While it lives, pages that rows are put into here and there are kept until most have found their rows,
/// instead of being written and read again for each.
class LargePageCache {
public:
    explicit LargePageCache(SQLiteConnection& connection)
        : m_connection(connection),
          m_usual(connection.integerResult("PRAGMA cache_size"))
    {
        setSize(kKibibytes);
    }
    ~LargePageCache()
    {
        try {
            setSize(m_usual);
            m_connection.run("PRAGMA shrink_memory");
        } catch (const std::exception& error) {
            qWarning("A database keeps its large cache: %s", error.what());
        }
    }
    LargePageCache(const LargePageCache&) = delete;
    LargePageCache& operator=(const LargePageCache&) = delete;

private:
    static constexpr qint64 kKibibytes = -96 * 1024; // negative for SQLite, which counts pages otherwise

    void setSize(qint64 size) { m_connection.run("PRAGMA cache_size = " + QByteArray::number(size)); }

    SQLiteConnection& m_connection;
    qint64 m_usual;
};

} // namespace

ProjectionReconciler::ProjectionReconciler(CoreDataScreenshotStore& structuredStore, Projection& projection)
    : m_structuredStore(structuredStore),
      m_projection(projection)
{
}

RowSum ProjectionReconciler::readRecords(SQLiteConnection& connection)
{
    return sumOfRows(connection, columnList(kEntityAttributes), "ScreenshotEntity");
}

ProjectionReconciler::Reading ProjectionReconciler::readProjection(SQLiteConnection& connection)
{
    Reading reading;
    reading.sum = sumOfRows(connection, columnList(kProjectionColumns), "screenshots");
    reading.hasItsSearchRows =
        hasAlignedSearchRows(connection) && searchRowCount(connection) == reading.sum.rows;
    return reading;
}

qint64 ProjectionReconciler::changeCount()
{
    SQLiteConnection& rows = m_projection.connection();
    return m_structuredStore.changeCount() + rows.totalChanges() + rows.integerResult("PRAGMA data_version");
}

bool ProjectionReconciler::reconcile()
{
    const RowSum records = readRecords(m_structuredStore.connection());
    return !readProjection(m_projection.connection()).isInStepWith(records) && mendDifferences();
}

bool ProjectionReconciler::reconcile(Outcome outcome, qint64 changeCountThen)
{
    if (outcome == Outcome::Unknown || changeCount() != changeCountThen)
        return reconcile();
    return outcome == Outcome::Different && mendDifferences();
}

bool ProjectionReconciler::mendDifferences()
{
    if (m_structuredStore.count() == 0 && m_projection.rowCount() > 0)
        adoptProjection();
    const bool searchFits = hasAlignedSearchRows(m_projection.connection()) &&
                            m_projection.searchRowCount() == m_projection.rowCount();
    const Difference difference = searchFits ? compare() : Difference{{}, true};
    if (difference.isTooLarge)
        rebuild();
    else if (!difference.identifiers.isEmpty())
        mend(difference.identifiers);
    return difference.isTooLarge || !difference.identifiers.isEmpty();
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
    const LargePageCache cache(m_projection.connection());
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
