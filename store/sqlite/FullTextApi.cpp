#include "store/sqlite/FullTextApi.h"

#include "store/StoreError.h"

#include <sqlite3.h>

namespace tessary {

fts5_api& fullTextApi(sqlite3* database)
{
    fts5_api* api = nullptr;
    sqlite3_stmt* statement = nullptr;
    if (sqlite3_prepare_v2(database, "SELECT fts5(?1)", -1, &statement, nullptr) == SQLITE_OK) {
        sqlite3_bind_pointer(statement, 1, static_cast<void*>(&api), "fts5_api_ptr", nullptr);
        sqlite3_step(statement);
    }
    sqlite3_finalize(statement);
    if (api == nullptr)
        throw StoreError(StoreError::Case::OpenDatabase, QString::fromUtf8(sqlite3_errmsg(database)));
    return *api;
}

} // namespace tessary
