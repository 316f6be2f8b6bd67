#include "store/sqlite/SQLiteInterruption.h"

#include <sqlite3.h>

namespace tessary {
namespace {

/// Steps of SQLite's virtual machine between two looks: those of about ten rows, some microseconds.
constexpr int kSteps = 500;

} // namespace

SQLiteInterruption::SQLiteInterruption(sqlite3* database, std::stop_token stop)
    : m_database(database),
      m_stop(std::move(stop))
{
    if (!m_stop.stop_possible())
        return;
    const auto isStopped = [](void* token) -> int {
        return static_cast<const std::stop_token*>(token)->stop_requested() ? 1 : 0;
    };
    sqlite3_progress_handler(m_database, kSteps, isStopped, &m_stop);
    m_interrupt.emplace(m_stop, [database] { sqlite3_interrupt(database); });
}

SQLiteInterruption::~SQLiteInterruption()
{
    m_interrupt.reset(); // from here on no interruption comes, and one that came is over with its statement
    sqlite3_progress_handler(m_database, 0, nullptr, nullptr);
}

} // namespace tessary
