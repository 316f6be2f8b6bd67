#include "app/SpacedWork.h"

#include "platform/testing/FakeClock.h"
#include "platform/testing/FakeImageCodec.h"
#include "tests/support/Await.h"

namespace tessary {
namespace {

using namespace std::chrono_literals;
using testing::await;
using testing::eventually;

class SpacedWorkTest : public ::testing::Test {
protected:
    ~SpacedWorkTest() override
    {
        flows.cancel();
        gate.open();
        await(flows.drained());
    }
    QCoro::Task<> run()
    {
        ++begun;
        co_await gate.passed();
        ++ended;
    }

    testing::FakeClock clock;
    testing::Gate gate;
    FlowSet flows{[](const std::exception&) { ADD_FAILURE() << "a run failed"; }};
    int begun = 0;
    int ended = 0;
    SpacedWork work{clock, flows, [this] { return run(); }, 5s};
};

TEST_F(SpacedWorkTest, TheFirstRequestIsServedAtOnce)
{
    work.request();
    EXPECT_EQ(ended, 1);
}

TEST_F(SpacedWorkTest, ABurstOfRequestsLeadsToOneMoreRunAfterARest)
{
    for (int i = 0; i < 200; ++i)
        work.request();
    EXPECT_EQ(begun, 1);
    clock.advance(4900ms);
    EXPECT_EQ(begun, 1);
    clock.advance(1h);
    EXPECT_EQ(begun, 2);
    EXPECT_EQ(clock.timers(), 0) << "nothing wakes up while there is nothing to do";
}

TEST_F(SpacedWorkTest, ARequestDuringARunIsServedByALaterOne)
{
    gate.close();
    work.request();
    work.request();
    EXPECT_EQ(begun, 1);
    gate.open();
    EXPECT_EQ(begun, 1);
    clock.advance(1h);
    EXPECT_EQ(begun, 2);
}

TEST_F(SpacedWorkTest, WhoeverWaitsDoesNotWaitForTheRest)
{
    work.request();
    await(work.now());
    EXPECT_EQ(begun, 2);
}

TEST_F(SpacedWorkTest, WhoeverWaitsGetsARunThatBeganAfterwardsAndSharesIt)
{
    gate.close();
    work.request();
    bool areDone[3] = {};
    const auto wait = [](SpacedWork& spaced, bool& isDone) -> QCoro::Task<> {
        co_await spaced.now();
        isDone = true;
    };
    for (bool& isDone : areDone)
        flows.add(wait(work, isDone));
    gate.open();
    EXPECT_TRUE(eventually([&] { return areDone[0] && areDone[1] && areDone[2]; }));
    EXPECT_EQ(begun, 2);
}

TEST_F(SpacedWorkTest, AStopEndsTheRestWithoutARun)
{
    work.request();
    work.request();
    flows.cancel();
    await(flows.drained());
    clock.advance(1h);
    EXPECT_EQ(begun, 1);
    await(work.now());
    EXPECT_EQ(begun, 1);
}

} // namespace
} // namespace tessary
