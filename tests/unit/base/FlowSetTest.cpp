#include "base/FlowSet.h"

#include "base/SerialLane.h"
#include "tests/support/Await.h"

namespace tessary {
namespace {

using testing::await;

QCoro::Task<> work(SerialLane& lane, int& done)
{
    auto nothing = lane.post([] {});
    co_await nothing;
    ++done;
}

QCoro::Task<> failure(SerialLane& lane)
{
    auto nothing = lane.post([] {});
    co_await nothing;
    throw std::runtime_error("lost");
}

QCoro::Task<> stayingWork(FlowSet& flows, SerialLane& lane, int& done)
{
    const FlowSet::Stay stay(flows);
    auto nothing = lane.post([] {});
    co_await nothing;
    ++done;
}

TEST(FlowSetTest, DrainsOnlyWhenWhatItsCallersAwaitHasEndedToo)
{
    SerialLane lane(QStringLiteral("flows"));
    FlowSet flows([](const std::exception&) {});
    int done = 0;
    const QCoro::Task<> awaited = stayingWork(flows, lane, done);
    EXPECT_FALSE(flows.isEmpty());
    await(flows.drained());
    EXPECT_EQ(done, 1);
    EXPECT_TRUE(flows.isEmpty());
}

TEST(FlowSetTest, DrainsOnlyWhenEveryFlowHasEnded)
{
    SerialLane lane(QStringLiteral("flows"));
    FlowSet flows([](const std::exception&) {});
    int done = 0;
    for (int i = 0; i < 5; ++i)
        flows.add(work(lane, done));
    EXPECT_FALSE(flows.isEmpty());
    await(flows.drained());
    EXPECT_EQ(done, 5);
    EXPECT_TRUE(flows.isEmpty());
}

TEST(FlowSetTest, GivesAnEscapedErrorToItsHandler)
{
    SerialLane lane(QStringLiteral("flows"));
    QStringList errors;
    FlowSet flows([&errors](const std::exception& error) { errors.append(QString::fromUtf8(error.what())); });
    flows.add(failure(lane));
    await(flows.drained());
    EXPECT_EQ(errors, QStringList{QStringLiteral("lost")});
}

TEST(FlowSetTest, IsDrainedAtOnceWhenNothingRuns)
{
    FlowSet flows([](const std::exception&) {});
    await(flows.drained());
    EXPECT_FALSE(flows.stopToken().stop_requested());
    flows.cancel();
    EXPECT_TRUE(flows.stopToken().stop_requested());
}

} // namespace
} // namespace tessary
