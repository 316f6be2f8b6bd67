#pragma once

#include "search/ListRequest.h"
#include "search/SearchQuery.h"
#include "store/ListQuery.h"
#include "store/sqlite/SQLiteConnection.h"

#include <QHash>

namespace tessary {

/// The order of the rows of one list, down to those that are alike in all that the list is sorted by.
struct ListOrder {
    QByteArray index;      ///< That SQLite lists them from.
    QByteArray total;      ///< What to sort other findings by so that they come in the same order.
    bool isSorted = false; ///< The index does not have the order; SQLite sorts what it finds there.
};

/// Knows for each kind of list the order in which its defining query comes out. Rows alike come as they lie
/// in the index, and which that is SQLite chooses, so it is asked.
class ListOrders {
public:
    /// @param reader has to outlive this.
    explicit ListOrders(SQLiteConnection& reader) : m_reader(reader) {}

    /// Nothing when SQLite lists them from no index. @throws StoreError.
    [[nodiscard]] std::optional<ListOrder> order(const ListConditions& ranges, ScreenshotSort sort);

private:
    [[nodiscard]] std::optional<ListOrder> ask(const ListConditions& ranges, ScreenshotSort sort);
    [[nodiscard]] QByteArrayList indexOrder(const QByteArray& index);

    SQLiteConnection& m_reader;
    QHash<QByteArray, std::optional<ListOrder>> m_known; // by conditions and order
};

} // namespace tessary
