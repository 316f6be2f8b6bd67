#pragma once

#include <QtGlobal>

namespace tessary {

class SQLiteConnection;

/// Makes the tables, indexes and columns that are missing. A projection that an older Tessary made gains
/// the columns it lacks, with their defaults. @throws StoreError.
void createProjectionSchema(SQLiteConnection& connection);
/// The full-text table anew and empty. @throws StoreError.
void recreateSearchTable(SQLiteConnection& connection);

/// The file's user version when every full-text row is known to have the row id of its item. The text
/// primary key leaves the row ids of items free to be the full-text table's too, as long as nobody vacuums
/// the file.
inline constexpr qint64 kAlignedVersion = 1;

/// How many full-text rows there are. @throws StoreError.
[[nodiscard]] qint64 searchRowCount(SQLiteConnection& connection);
/// Whether every full-text row is known to have the row id of its item; see `Projection`.
[[nodiscard]] bool hasAlignedSearchRows(SQLiteConnection& connection);
void markSearchRowsAligned(SQLiteConnection& connection);

} // namespace tessary
