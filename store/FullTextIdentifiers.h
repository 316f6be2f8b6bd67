#pragma once

namespace tessary {

class SQLiteConnection;

/// Puts a table of the temporary schema before the full-text table, so that on this connection
/// `SELECT id FROM screenshots_fts_v5 WHERE screenshots_fts_v5 MATCH ?` finds the same ids several times
/// quicker. The full-text engine looks every id up in a row that also holds the item's texts, and decodes
/// them all. Here it lists row ids only; the items have the same ones (see `Projection`), and an index
/// that holds nothing but their ids. The ids come in their order where there are many, which is also how
/// SQLite collects them quickest.
///
/// For a connection that only reads: the full-text table itself is `main.screenshots_fts_v5` from then on.
/// @throws StoreError.
void installFullTextIdentifiers(SQLiteConnection& connection);

} // namespace tessary
