#include "store/FullTextIdentifiers.h"

#include "store/ProjectionSchema.h"
#include "store/StoreError.h"
#include "store/sqlite/SQLiteConnection.h"

#include <sqlite3.h>

#include <memory>
#include <vector>

namespace tessary {
namespace {

constexpr int kIdColumn = 0;
constexpr int kMatchColumn = 1;
constexpr char kModule[] = "tessary_full_text_identifiers";
constexpr char kDeclaration[] = "CREATE TABLE x(id TEXT, screenshots_fts_v5 HIDDEN)";
constexpr char kMatches[] = "SELECT rowid FROM main.screenshots_fts_v5 WHERE screenshots_fts_v5 MATCH ?";
constexpr char kMatchesWithIds[] = "SELECT id FROM main.screenshots_fts_v5 WHERE screenshots_fts_v5 MATCH ?";
constexpr char kIdOfRow[] = "SELECT id FROM main.screenshots WHERE rowid = ?";
constexpr char kAllIds[] = "SELECT id, rowid FROM main.screenshots ORDER BY id";
constexpr char kAlignment[] = "PRAGMA main.user_version";
constexpr char kLastRow[] = "SELECT max(rowid) FROM main.screenshots";

/// To look one row up takes about as long as to pass over so many in the index.
constexpr sqlite3_int64 kPassedInALookUp = 8;

struct Finalize {
    void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};
using Statement = std::unique_ptr<sqlite3_stmt, Finalize>;

/// An error of SQLite's on its way through one of our functions back to SQLite.
struct Failure {
    int result;
};

struct Table : sqlite3_vtab {
    explicit Table(sqlite3* connection) : sqlite3_vtab{}, database(connection) {}
    sqlite3* database;
};

/// One run through the ids that match.
class Cursor : public sqlite3_vtab_cursor {
public:
    explicit Cursor(sqlite3* database) : sqlite3_vtab_cursor{}, m_database(database) {}

    void start(sqlite3_value* expression);
    void next();
    [[nodiscard]] bool isAtEnd() const { return m_isAtEnd; }
    [[nodiscard]] sqlite3_value* id() const { return sqlite3_column_value(m_ids.get(), kIdColumn); }

private:
    [[nodiscard]] Statement prepare(const char* sql) const;
    static bool step(const Statement& statement);
    [[nodiscard]] sqlite3_int64 integerResult(const char* sql) const;
    void collectRows(sqlite3_value* expression);
    void markRows(sqlite3_int64 last);
    [[nodiscard]] bool isMarked(sqlite3_int64 row) const;

    sqlite3* m_database;
    Statement m_ids;                   ///< Its current row's first column is the current id.
    std::vector<sqlite3_int64> m_rows; ///< Those still to be looked up one by one, the last one first.
    std::vector<bool> m_marked;        ///< By row id, when all ids are passed through.
    bool m_isAtEnd = true;
    enum class Way { EngineItself, LookUps, Index } m_way = Way::EngineItself;
};

Statement Cursor::prepare(const char* sql) const
{
    sqlite3_stmt* statement = nullptr;
    const int result = sqlite3_prepare_v2(m_database, sql, -1, &statement, nullptr);
    if (result != SQLITE_OK)
        throw Failure{result};
    return Statement(statement);
}

bool Cursor::step(const Statement& statement)
{
    const int result = sqlite3_step(statement.get());
    if (result != SQLITE_ROW && result != SQLITE_DONE)
        throw Failure{result};
    return result == SQLITE_ROW;
}

sqlite3_int64 Cursor::integerResult(const char* sql) const
{
    const Statement statement = prepare(sql);
    return step(statement) ? sqlite3_column_int64(statement.get(), 0) : 0;
}

void Cursor::start(sqlite3_value* expression)
{
    m_rows.clear();
    m_marked.clear();
    if (integerResult(kAlignment) != kAlignedVersion) {
        m_way = Way::EngineItself;
        m_ids = prepare(kMatchesWithIds);
        sqlite3_bind_value(m_ids.get(), 1, expression);
        return next();
    }
    collectRows(expression);
    const sqlite3_int64 last = integerResult(kLastRow);
    const bool isFew = static_cast<sqlite3_int64>(m_rows.size()) < last / kPassedInALookUp;
    m_way = isFew ? Way::LookUps : Way::Index;
    m_ids = prepare(isFew ? kIdOfRow : kAllIds);
    if (!isFew)
        markRows(last);
    next();
}

void Cursor::collectRows(sqlite3_value* expression)
{
    const Statement matches = prepare(kMatches);
    sqlite3_bind_value(matches.get(), 1, expression);
    while (step(matches))
        m_rows.push_back(sqlite3_column_int64(matches.get(), 0));
}

void Cursor::markRows(sqlite3_int64 last)
{
    m_marked.resize(static_cast<size_t>(last) + 1);
    for (const sqlite3_int64 row : m_rows) {
        if (row >= 0 && row <= last)
            m_marked[static_cast<size_t>(row)] = true;
    }
    m_rows = {};
}

bool Cursor::isMarked(sqlite3_int64 row) const
{
    return row >= 0 && static_cast<size_t>(row) < m_marked.size() && m_marked[static_cast<size_t>(row)];
}

void Cursor::next()
{
    m_isAtEnd = true;
    switch (m_way) {
    case Way::EngineItself:
        m_isAtEnd = !step(m_ids);
        return;
    case Way::LookUps:
        while (m_isAtEnd && !m_rows.empty()) {
            sqlite3_reset(m_ids.get());
            sqlite3_bind_int64(m_ids.get(), 1, m_rows.back());
            m_rows.pop_back();
            m_isAtEnd = !step(m_ids);
        }
        return;
    case Way::Index:
        while (m_isAtEnd && step(m_ids))
            m_isAtEnd = !isMarked(sqlite3_column_int64(m_ids.get(), 1));
        return;
    }
}

/// What SQLite is told when a step of ours fails.
template <typename Work>
int guarded(sqlite3_vtab* table, Work work)
{
    try {
        work();
        return SQLITE_OK;
    } catch (const Failure& failure) {
        sqlite3_free(table->zErrMsg);
        table->zErrMsg = sqlite3_mprintf("%s", sqlite3_errmsg(static_cast<Table*>(table)->database));
        return failure.result;
    } catch (const std::bad_alloc&) {
        return SQLITE_NOMEM;
    }
}

int connectTable(sqlite3* database, void*, int, const char* const*, sqlite3_vtab** table, char**)
{
    const int result = sqlite3_declare_vtab(database, kDeclaration);
    if (result != SQLITE_OK)
        return result;
    *table = new (std::nothrow) Table(database);
    return *table == nullptr ? SQLITE_NOMEM : SQLITE_OK;
}

int disconnectTable(sqlite3_vtab* table)
{
    delete static_cast<Table*>(table);
    return SQLITE_OK;
}

int chooseWay(sqlite3_vtab*, sqlite3_index_info* info)
{
    constexpr double kCost = 1000;
    for (int i = 0; i < info->nConstraint; ++i) {
        const auto& constraint = info->aConstraint[i];
        if (constraint.usable == 0 || constraint.iColumn != kMatchColumn ||
            constraint.op != SQLITE_INDEX_CONSTRAINT_MATCH)
            continue;
        info->aConstraintUsage[i].argvIndex = 1;
        info->aConstraintUsage[i].omit = 1;
        info->estimatedCost = kCost;
        return SQLITE_OK;
    }
    return SQLITE_CONSTRAINT; // without MATCH there is nothing to list
}

int openCursor(sqlite3_vtab* table, sqlite3_vtab_cursor** cursor)
{
    *cursor = new (std::nothrow) Cursor(static_cast<Table*>(table)->database);
    return *cursor == nullptr ? SQLITE_NOMEM : SQLITE_OK;
}

int closeCursor(sqlite3_vtab_cursor* cursor)
{
    delete static_cast<Cursor*>(cursor);
    return SQLITE_OK;
}

int startCursor(sqlite3_vtab_cursor* cursor, int, const char*, int, sqlite3_value** arguments)
{
    return guarded(cursor->pVtab, [=] { static_cast<Cursor*>(cursor)->start(arguments[0]); });
}

int moveCursor(sqlite3_vtab_cursor* cursor)
{
    return guarded(cursor->pVtab, [=] { static_cast<Cursor*>(cursor)->next(); });
}

int isCursorAtEnd(sqlite3_vtab_cursor* cursor)
{
    return static_cast<Cursor*>(cursor)->isAtEnd() ? 1 : 0;
}

int columnOfCursor(sqlite3_vtab_cursor* cursor, sqlite3_context* context, int column)
{
    if (column == kIdColumn)
        sqlite3_result_value(context, static_cast<Cursor*>(cursor)->id());
    return SQLITE_OK;
}

int rowOfCursor(sqlite3_vtab_cursor*, sqlite3_int64* row)
{
    *row = 0; // nobody asks
    return SQLITE_OK;
}

sqlite3_module module()
{
    sqlite3_module made{};
    made.xCreate = &connectTable;
    made.xConnect = &connectTable;
    made.xBestIndex = &chooseWay;
    made.xDisconnect = &disconnectTable;
    made.xDestroy = &disconnectTable;
    made.xOpen = &openCursor;
    made.xClose = &closeCursor;
    made.xFilter = &startCursor;
    made.xNext = &moveCursor;
    made.xEof = &isCursorAtEnd;
    made.xColumn = &columnOfCursor;
    made.xRowid = &rowOfCursor;
    return made;
}

} // namespace

void installFullTextIdentifiers(SQLiteConnection& connection)
{
    static const sqlite3_module kept = module();
    if (sqlite3_create_module_v2(connection.handle(), kModule, &kept, nullptr, nullptr) != SQLITE_OK)
        throw StoreError(StoreError::Case::OpenDatabase,
                         QString::fromUtf8(sqlite3_errmsg(connection.handle())));
    connection.run(QByteArray("CREATE VIRTUAL TABLE temp.screenshots_fts_v5 USING ") + kModule);
}

} // namespace tessary
