#include "store/sqlite/SQLiteInterruption.h"

#include "store/StoreError.h"
#include "store/sqlite/SQLiteConnection.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <semaphore>
#include <thread>

namespace tessary {
namespace {

constexpr char kEndless[] = "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n) "
                            "SELECT max(announce(i)) FROM n";

/// `announce(i)` releases the semaphore at its first call.
void installAnnouncement(SQLiteConnection& connection, std::binary_semaphore& begun)
{
    const auto announce = [](sqlite3_context* context, int, sqlite3_value** arguments) {
        if (sqlite3_value_int64(arguments[0]) == 1)
            static_cast<std::binary_semaphore*>(sqlite3_user_data(context))->release();
        sqlite3_result_int(context, 1);
    };
    sqlite3_create_function_v2(connection.handle(), "announce", 1, SQLITE_UTF8, &begun, announce, nullptr,
                               nullptr, nullptr);
}

TEST(SQLiteInterruptionTest, EndsTheRunningQueryAndNothingAfterIt)
{
    SQLiteConnection connection(QStringLiteral(":memory:"));
    std::binary_semaphore begun(0);
    installAnnouncement(connection, begun);
    std::stop_source stop;
    std::thread stopper([&begun, &stop] {
        begun.acquire();
        stop.request_stop();
    });
    {
        const SQLiteInterruption interruption(connection.handle(), stop.get_token());
        SQLiteStatement endless = connection.queryOnce(kEndless);
        EXPECT_THROW((void)endless.nextRow(), StoreError);
    }
    stopper.join();
    EXPECT_EQ(connection.integerResult("SELECT count(*) FROM (VALUES (1), (2))"), 2);
    connection.run("CREATE TABLE t (a)");
    connection.run("INSERT INTO t WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n "
                   "WHERE i < 10000) SELECT i FROM n");
    EXPECT_EQ(connection.integerResult("SELECT count(*) FROM t"), 10'000);
}

TEST(SQLiteInterruptionTest, AStopThatCameBeforeTheFirstStepIsNotForgotten)
{
    SQLiteConnection connection(QStringLiteral(":memory:"));
    std::binary_semaphore begun(0);
    installAnnouncement(connection, begun);
    std::stop_source stop;
    const SQLiteInterruption interruption(connection.handle(), stop.get_token());
    SQLiteStatement endless = connection.queryOnce(kEndless);
    stop.request_stop();
    EXPECT_THROW((void)endless.nextRow(), StoreError);
}

TEST(SQLiteInterruptionTest, AStopOfAnotherQueryDoesNothing)
{
    SQLiteConnection connection(QStringLiteral(":memory:"));
    std::stop_source older;
    std::stop_source newer;
    {
        const SQLiteInterruption interruption(connection.handle(), older.get_token());
        EXPECT_EQ(connection.integerResult("SELECT 1"), 1);
    }
    const SQLiteInterruption interruption(connection.handle(), newer.get_token());
    older.request_stop();
    EXPECT_EQ(connection.integerResult("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n "
                                       "WHERE i < 10000) SELECT max(i) FROM n"),
              10'000);
}

} // namespace
} // namespace tessary
