#pragma once

#include "search/ListRequest.h"
#include "store/ScreenshotRecord.h"
#include "store/sqlite/SQLiteConnection.h"

namespace tessary::testing {

/// Lists by the prescribed query and SQLite itself, on a connection without anything of ours.
class ListOracle {
public:
    enum class Like {
        OfSQLite, ///< Sees texts up to their first NUL, and refuses patterns of over 50,000 bytes.
        Naive,    ///< The same rules without these two, in the plainest way.
    };

    ListOracle(const QString& projectionPath, Like like);

    /// @returns nothing when SQLite refuses the query.
    [[nodiscard]] std::optional<QList<ScreenshotRecord>> page(const ListRequest& request);

private:
    SQLiteConnection m_connection;
};

} // namespace tessary::testing
