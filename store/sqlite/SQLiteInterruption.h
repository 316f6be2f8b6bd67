#pragma once

#include <functional>
#include <optional>
#include <stop_token>

struct sqlite3;

namespace tessary {

/// While it lives, the statement running on the connection ends early, with an error, once a stop is
/// requested, from whichever thread. Made, used and destroyed on the connection's thread, around one query.
///
/// The running statement looks at the token now and then, and SQLite's own interruption is asked for
/// besides. The latter alone would be forgotten if it came before the statement's first step; but it also
/// ends what looks at no token, above all the full-text engine's search for everything with a prefix. It
/// hits whatever runs on the connection, so nothing else may: no change, and no query left unfinished.
class SQLiteInterruption {
public:
    SQLiteInterruption(sqlite3* database, std::stop_token stop);
    ~SQLiteInterruption();
    SQLiteInterruption(const SQLiteInterruption&) = delete;
    SQLiteInterruption& operator=(const SQLiteInterruption&) = delete;

private:
    sqlite3* m_database;
    std::stop_token m_stop;
    std::optional<std::stop_callback<std::function<void()>>> m_interrupt;
};

} // namespace tessary
