#pragma once

struct fts5_api;
struct sqlite3;

namespace tessary {

/// The full-text engine's interface for its extensions, as that connection has it. @throws StoreError.
[[nodiscard]] fts5_api& fullTextApi(sqlite3* database);

} // namespace tessary
