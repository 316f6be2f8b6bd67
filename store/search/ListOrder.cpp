#include "store/search/ListOrder.h"

#include "store/RecordColumns.h"

namespace tessary {
namespace {

/// The name behind "… USING INDEX " or "… USING COVERING INDEX ", if that is a line about the items' table.
QByteArray indexOfStep(const QString& step)
{
    const qsizetype found = step.indexOf(QLatin1String(" INDEX "));
    if (!step.contains(QLatin1String(" s USING ")) || found < 0)
        return {};
    return step.mid(found).trimmed().section(u' ', 1, 1).toUtf8();
}

} // namespace

std::optional<ListOrder> ListOrders::order(const ListConditions& ranges, ScreenshotSort sort)
{
    const QByteArray key = ranges.texts.join('\n') + '\n' + orderText(sort);
    const auto known = m_known.constFind(key);
    if (known != m_known.constEnd())
        return *known;
    const std::optional<ListOrder> order = ask(ranges, sort);
    m_known.insert(key, order);
    return order;
}

std::optional<ListOrder> ListOrders::ask(const ListConditions& ranges, ScreenshotSort sort)
{
    const QByteArray order = orderText(sort);
    SQLiteStatement steps = m_reader.queryOnce(
        "EXPLAIN QUERY PLAN SELECT " + columnList(kProjectionColumns, "s.") + " FROM screenshots s WHERE " +
            ranges.texts.join(" AND ") + " ORDER BY " + order + " LIMIT ? OFFSET ?",
        ranges.bindings + QList<SQLiteValue>{qint64{1}, qint64{0}});
    constexpr int kStep = 3;
    ListOrder found;
    while (steps.nextRow()) {
        const QString step = steps.text(kStep);
        if (step.contains(QLatin1String("ORDER BY")))
            found.isSorted = true;
        else if (found.index.isEmpty())
            found.index = indexOfStep(step);
    }
    if (found.index.isEmpty())
        return std::nullopt;
    found.total = (QByteArrayList{order} + indexOrder(found.index) + QByteArrayList{"s.rowid"}).join(", ");
    return found;
}

QByteArrayList ListOrders::indexOrder(const QByteArray& index)
{
    // An expression has no name; those of ours stand in the order of the list anyway.
    SQLiteStatement columns = m_reader.queryOnce(
        "SELECT name, desc FROM pragma_index_xinfo(?) WHERE key = 1 AND name IS NOT NULL ORDER BY seqno",
        {QString::fromUtf8(index)});
    QByteArrayList order;
    while (columns.nextRow())
        order.append("s." + columns.text(0).toUtf8() + (columns.integer(1) != 0 ? " DESC" : ""));
    return order;
}

} // namespace tessary
