#include "tests/unit/store/differential/ListOracle.h"

#include "store/ListQuery.h"
#include "store/RecordColumns.h"
#include "store/StoreError.h"

#include <sqlite3.h>

#include <string_view>
#include <vector>

namespace tessary::testing {
namespace {

char folded(char byte)
{
    return byte >= 'A' && byte <= 'Z' ? static_cast<char>(byte - 'A' + 'a') : byte;
}

size_t afterCharacter(std::string_view text, size_t place)
{
    constexpr unsigned kFollowingBits = 0xC0U;
    constexpr unsigned kFollowing = 0x80U;
    do {
        ++place;
    } while (place < text.size() && (static_cast<unsigned char>(text[place]) & kFollowingBits) == kFollowing);
    return place;
}

/// Follows all ways in which the pattern may fit at once.
bool isLike(std::string_view pattern, std::string_view text)
{
    std::vector<size_t> places{0}; // where in the text what is done of the pattern may end
    for (const char wanted : pattern) {
        std::vector<size_t> next;
        if (wanted == '%') {
            for (size_t place = places.front(); place < text.size(); place = afterCharacter(text, place))
                next.push_back(place);
            next.push_back(text.size());
        }
        for (const size_t place : places) {
            if (wanted == '%' || place == text.size())
                continue;
            if (wanted == '_')
                next.push_back(afterCharacter(text, place));
            else if (folded(wanted) == folded(text[place]))
                next.push_back(place + 1);
        }
        if (next.empty())
            return false;
        places = std::move(next);
    }
    return places.back() == text.size();
}

std::string_view textOf(sqlite3_value* value)
{
    const auto* text = reinterpret_cast<const char*>(sqlite3_value_text(value));
    return {text, static_cast<size_t>(sqlite3_value_bytes(value))};
}

void naiveLike(sqlite3_context* context, int, sqlite3_value** arguments)
{
    const bool isAbsent =
        sqlite3_value_type(arguments[0]) == SQLITE_NULL || sqlite3_value_type(arguments[1]) == SQLITE_NULL;
    if (!isAbsent)
        sqlite3_result_int(context, isLike(textOf(arguments[0]), textOf(arguments[1])) ? 1 : 0);
}

} // namespace

ListOracle::ListOracle(const QString& projectionPath, Like like) : m_connection(projectionPath)
{
    m_connection.run("PRAGMA query_only = ON");
    if (like == Like::Naive)
        sqlite3_create_function_v2(m_connection.handle(), "like", 2, SQLITE_UTF8 | SQLITE_DETERMINISTIC,
                                   nullptr, &naiveLike, nullptr, nullptr, nullptr);
}

std::optional<QList<ScreenshotRecord>> ListOracle::page(const ListRequest& request)
{
    const ListQuery query = listQuery(request);
    try {
        SQLiteStatement rows = m_connection.queryOnce(query.sql, query.bindings);
        QList<ScreenshotRecord> found;
        while (rows.nextRow())
            found.append(decodeProjectionRow(rows, request.maximumTextLength));
        return found;
    } catch (const StoreError&) {
        return std::nullopt;
    }
}

} // namespace tessary::testing
