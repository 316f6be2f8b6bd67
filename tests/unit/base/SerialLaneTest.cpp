#include "base/SerialLane.h"

#include "tests/support/Await.h"

namespace tessary {
namespace {

using testing::await;

QCoro::Task<int> answer(SerialLane& lane, int value)
{
    auto work = lane.post([value] { return value; });
    co_return co_await work;
}

TEST(SerialLaneTest, RunsWorkInTheOrderPosted)
{
    SerialLane lane(QStringLiteral("order"));
    QList<int> seen;
    for (int i = 0; i < 100; ++i)
        lane.postDetached([&seen, i] { seen.append(i); });
    await(answer(lane, 0));
    ASSERT_EQ(seen.size(), 100);
    EXPECT_TRUE(std::is_sorted(seen.begin(), seen.end()));
}

TEST(SerialLaneTest, RunsWorkOnOneOtherThreadAndResumesTheCallerOnItsOwn)
{
    SerialLane lane(QStringLiteral("threads"));
    const auto flow = [](SerialLane& worker, std::thread::id& inside,
                         std::thread::id& after) -> QCoro::Task<> {
        auto work = worker.post([] { return std::this_thread::get_id(); });
        inside = co_await work;
        after = std::this_thread::get_id();
    };
    std::thread::id inside;
    std::thread::id after;
    await(flow(lane, inside, after));
    EXPECT_NE(inside, std::this_thread::get_id());
    EXPECT_EQ(after, std::this_thread::get_id());
}

TEST(SerialLaneTest, HandsTheVeryExceptionToTheCaller)
{
    SerialLane lane(QStringLiteral("errors"));
    const auto failing = [](SerialLane& worker) -> QCoro::Task<> {
        auto work = worker.post([] { throw std::out_of_range("beyond"); });
        co_await work;
    };
    EXPECT_THROW(await(failing(lane)), std::out_of_range);
    EXPECT_EQ(await(answer(lane, 7)), 7);
}

TEST(SerialLaneTest, DestroysWhatWorkCapturedOnce)
{
    SerialLane lane(QStringLiteral("captures"));
    const auto captured = std::make_shared<QString>(QStringLiteral("captured"));
    const auto flow = [](SerialLane& worker, std::shared_ptr<QString> text) -> QCoro::Task<QString> {
        auto work = worker.post([text] { return *text; });
        co_return co_await work;
    };
    EXPECT_EQ(await(flow(lane, captured)), *captured);
    EXPECT_EQ(captured.use_count(), 1);
}

TEST(SerialLaneTest, FinishesWhatWasPostedBeforeItGoes)
{
    int done = 0;
    {
        SerialLane lane(QStringLiteral("end"));
        for (int i = 0; i < 50; ++i)
            lane.postDetached([&done] { ++done; });
    }
    EXPECT_EQ(done, 50);
}

TEST(SerialLaneTest, GoesWithoutEverHavingRun)
{
    const SerialLane lane(QStringLiteral("idle"));
    EXPECT_EQ(lane.name(), QStringLiteral("idle"));
}

} // namespace
} // namespace tessary
