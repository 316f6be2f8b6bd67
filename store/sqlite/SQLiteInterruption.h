#pragma once

#include <stop_token>

struct sqlite3;

namespace tessary {

/// While it lives, the statement running on the connection ends early, with an error, once a stop is
/// requested, from whichever thread. Made, used and destroyed on the connection's thread, around one query.
///
/// The running statement looks at the token now and then. Interrupting it from outside instead would be
/// forgotten by SQLite if it came between two statements, and hit a later one if it came too late.
class SQLiteInterruption {
public:
    SQLiteInterruption(sqlite3* database, std::stop_token stop);
    ~SQLiteInterruption();
    SQLiteInterruption(const SQLiteInterruption&) = delete;
    SQLiteInterruption& operator=(const SQLiteInterruption&) = delete;

private:
    sqlite3* m_database;
    std::stop_token m_stop;
};

} // namespace tessary
