#pragma once

#include "search/ListRequest.h"
#include "store/sqlite/SQLiteValue.h"

#include <QByteArray>
#include <QList>

namespace tessary {

/// One page of one list as a query of the projection, whose rows have the order of `kProjectionColumns`.
struct ListQuery {
    QByteArray sql;
    QList<SQLiteValue> bindings;
};

/// Takes what was typed apart and assembles the query. Any thread. @throws StoreError (Prepare) for more
/// than 4,000 words.
[[nodiscard]] ListQuery listQuery(const ListRequest& request);

} // namespace tessary
