#pragma once

namespace tessary {

class SQLiteConnection;

/// Makes the tables, indexes and columns that are missing. A projection that an older Tessary made gains
/// the columns it lacks, with their defaults. @throws StoreError.
void createProjectionSchema(SQLiteConnection& connection);
/// The full-text table anew and empty. @throws StoreError.
void recreateSearchTable(SQLiteConnection& connection);

/// Whether every full-text row is known to have the row id of its item; see `Projection`.
[[nodiscard]] bool hasAlignedSearchRows(SQLiteConnection& connection);
void markSearchRowsAligned(SQLiteConnection& connection);

} // namespace tessary
