#include "store/Projection.h"
#include "store/StoreError.h"
#include "tests/support/RecordSamples.h"
#include "tests/support/TemporaryFolder.h"

#include <QTimeZone>

#include <atomic>
#include <thread>

namespace tessary {
namespace {

constexpr int kItems = 400;
constexpr int kRounds = 300;

ListRequest requestOf(const QString& text)
{
    ListRequest request;
    request.rawQuery = text;
    request.limit = kItems;
    request.now = Date{1'800'000'000};
    request.calendar = Calendar{QTimeZone::utc()};
    return request;
}

TEST(ProjectionConcurrencyTest, ASearchThatWasStoppedAnywhereLeavesTheNextOneWhole)
{
    const testing::TemporaryFolder folder;
    Projection projection(folder.file(QStringLiteral("Tessary.metadata.sqlite3")));
    {
        SQLiteTransaction transaction(projection.connection());
        for (int i = 0; i < kItems; ++i) {
            const ScreenshotRecord record =
                testing::textRecord(QStringLiteral("火锅 e%1 each %2").arg(i).arg(i * 7));
            projection.insertProjection(record);
            projection.updateSearchIndex(record);
        }
        transaction.commit();
    }
    const ListRequest query = requestOf(QStringLiteral("huoguo e"));
    int stopped = 0;
    for (int i = 0; i < kRounds; ++i) {
        std::stop_source stop;
        std::atomic<bool> isRunning = false;
        std::jthread stopper([&stop, &isRunning, i] {
            isRunning.wait(false);
            for (int turn = 0; turn < i; ++turn)
                std::this_thread::yield();
            stop.request_stop();
        });
        isRunning = true;
        isRunning.notify_one();
        try {
            EXPECT_EQ(projection.page(query, stop.get_token()).size(), kItems);
        } catch (const StoreError&) {
            ++stopped;
        }
        stopper.join();
        ASSERT_EQ(projection.page(query, {}).size(), kItems);
    }
    EXPECT_GT(stopped, 0);
}

} // namespace
} // namespace tessary
