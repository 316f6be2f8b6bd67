#pragma once

struct sqlite3;

namespace tessary {

/// Puts a LIKE of ours in the place of SQLite's on that connection, for patterns without ESCAPE. It answers
/// the same, quicker for text between two `%`, and refuses no pattern: SQLite's own fails for
/// one over 50,000 bytes, and takes a NUL for the end.
/// @throws StoreError.
void installLikeFunction(sqlite3* database);

} // namespace tessary
