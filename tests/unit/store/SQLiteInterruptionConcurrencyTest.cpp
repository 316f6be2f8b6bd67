#include "store/StoreError.h"
#include "store/sqlite/SQLiteConnection.h"
#include "store/sqlite/SQLiteInterruption.h"

#include <gtest/gtest.h>

#include <mutex>
#include <thread>

namespace tessary {
namespace {

constexpr int kRounds = 300;
constexpr char kLongCount[] = "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n "
                              "WHERE i < 20000) SELECT max(i) FROM n";

/// What a second thread stops over and over while the first one goes on with its queries.
class CurrentStop {
public:
    std::stop_token begin()
    {
        const std::scoped_lock lock(m_mutex);
        m_stop = std::stop_source();
        return m_stop.get_token();
    }
    void stop()
    {
        const std::scoped_lock lock(m_mutex);
        m_stop.request_stop();
    }

private:
    std::mutex m_mutex;
    std::stop_source m_stop;
};

TEST(SQLiteInterruptionConcurrencyTest, StopsUnderLoadNeverReachAWriteBetweenTheQueries)
{
    SQLiteConnection connection(QStringLiteral(":memory:"));
    connection.run("CREATE TABLE t (a)");
    CurrentStop current;
    std::jthread stopper([&current](const std::stop_token& end) {
        while (!end.stop_requested()) {
            current.stop();
            std::this_thread::yield();
        }
    });
    int stopped = 0;
    for (int i = 0; i < kRounds; ++i) {
        try {
            const SQLiteInterruption interruption(connection.handle(), current.begin());
            EXPECT_EQ(connection.integerResult(kLongCount), 20'000);
        } catch (const StoreError&) {
            ++stopped;
        }
        ASSERT_NO_THROW(connection.run("INSERT INTO t WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL "
                                       "SELECT i + 1 FROM n WHERE i < 2000) SELECT i FROM n"));
    }
    EXPECT_GT(stopped, 0);
    EXPECT_EQ(connection.integerResult("SELECT count(*) FROM t"), qint64{2000} * kRounds);
}

} // namespace
} // namespace tessary
