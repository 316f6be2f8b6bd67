#pragma once

#include "store/sqlite/SQLiteConnection.h"

#include <QString>

#include <chrono>

namespace tessary {

/// Which rows of the projection may hold a piece of text in one of the columns that keywords are looked for
/// in.
///
/// What it knows is derived from those rows and kept in their file. It may name rows that do not hold the
/// piece, after a change or a removal too; it never leaves out one that does, of the rows that are indexed.
/// Rows behind `indexedThrough`, and `pendingRows` among those before, are not, or not as they are now. They
/// wait until they are many, since indexing them one by one would write many times as much. Triggers note
/// what is pending, whoever changes the file. Used from the store's lane; throws StoreError.
class GramIndex {
public:
    /// Makes the tables that are missing, and empties what an older Tessary made by other rules.
    /// @param connection has to outlive this; the one that writes.
    explicit GramIndex(SQLiteConnection& connection);

    /// What a connection needs to ask the index.
    static void prepare(const SQLiteConnection& connection);
    struct Query {
        QByteArray match;     ///< Empty for nothing to go by, or too little to be quick.
        bool isExact = false; ///< Rows that it names hold the keyword, unless they were changed.
    };
    /// What to ask the index for: rows in which LIKE may find the keyword between two `%`.
    [[nodiscard]] static Query query(const QString& keyword);

    /// The last row that is indexed; 0 for none, and where the index is not to be asked. As the connection
    /// sees it.
    [[nodiscard]] static qint64 indexedThrough(SQLiteConnection& connection);
    /// Rows before that which have other texts than when they were indexed.
    [[nodiscard]] static SQLiteStatement pendingRows(SQLiteConnection& connection);
    /// How many rows there are of both kinds, at most.
    [[nodiscard]] static qint64 unindexedRows(SQLiteConnection& connection);
    /// Rows that may be named for what they do not hold any more.
    [[nodiscard]] static SQLiteStatement changedRows(SQLiteConnection& connection);
    /// Indexes more rows in one transaction: so many at most, and fewer when that takes
    /// longer than it may.
    /// What fails, makes the index invalid. @returns whether there is more to do now. @throws StoreError when
    /// not even that can be noted.
    bool indexMore(qint64 mostRows, std::chrono::milliseconds longest = std::chrono::milliseconds::max());
    /// Knows of no row from then on. To be called in the transaction that removes the rows.
    void clear();
    /// For an index that turned out to be damaged: nobody asks it any more, and `indexMore` begins anew.
    void invalidate();
    /// Whether the index names the row for everything that the row holds, or is not to know it yet.
    [[nodiscard]] bool isRightAbout(qint64 row);

private:
    [[nodiscard]] bool isValid();
    [[nodiscard]] qint64 nextRow(qint64 through);
    bool indexPiece(qint64 mostRows, std::chrono::milliseconds longest);
    void create();
    void indexRow(qint64 row);

    SQLiteConnection& m_connection;
};

} // namespace tessary
