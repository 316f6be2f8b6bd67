#include "store/sqlite/LikeFunction.h"

#include "store/StoreError.h"
#include "store/sqlite/LikePattern.h"

#include <sqlite3.h>

namespace tessary {
namespace {

QByteArrayView textOf(sqlite3_value* value)
{
    const auto* text = reinterpret_cast<const char*>(sqlite3_value_text(value));
    return {text, text == nullptr ? 0 : sqlite3_value_bytes(value)};
}

/// `like(pattern, text)`. The pattern is a parameter, so that SQLite keeps it, taken apart, for all rows.
void like(sqlite3_context* context, int, sqlite3_value** arguments)
{
    constexpr int kPattern = 0;
    constexpr int kText = 1;
    if (sqlite3_value_type(arguments[kPattern]) == SQLITE_NULL ||
        sqlite3_value_type(arguments[kText]) == SQLITE_NULL)
        return;
    try {
        auto* pattern = static_cast<LikePattern*>(sqlite3_get_auxdata(context, kPattern));
        if (pattern != nullptr)
            return sqlite3_result_int(context, pattern->matches(textOf(arguments[kText])) ? 1 : 0);
        auto made = std::make_unique<LikePattern>(textOf(arguments[kPattern]));
        sqlite3_result_int(context, made->matches(textOf(arguments[kText])) ? 1 : 0);
        sqlite3_set_auxdata(context, kPattern, made.release(),
                            [](void* kept) { delete static_cast<LikePattern*>(kept); });
    } catch (const std::bad_alloc&) {
        sqlite3_result_error_nomem(context);
    }
}

} // namespace

void installLikeFunction(sqlite3* database)
{
    constexpr int kArguments = 2;
    const int result =
        sqlite3_create_function_v2(database, "like", kArguments, SQLITE_UTF8 | SQLITE_DETERMINISTIC, nullptr,
                                   &like, nullptr, nullptr, nullptr);
    if (result != SQLITE_OK)
        throw StoreError(StoreError::Case::OpenDatabase, QString::fromUtf8(sqlite3_errmsg(database)));
}

} // namespace tessary
