#include "platform/linux/SystemClock.h"

#include "tests/support/Await.h"

namespace tessary {
namespace {

using namespace std::chrono_literals;
using testing::await;
using testing::eventually;

TEST(SystemClockTest, TellsTheTimeWithAFraction)
{
    const SystemClock clock;
    const double before = static_cast<double>(QDateTime::currentMSecsSinceEpoch()) / 1000.0;
    const double now = clock.now().secondsSince1970;
    const double after = static_cast<double>(QDateTime::currentMSecsSinceEpoch() + 1) / 1000.0;
    EXPECT_GE(now, before);
    EXPECT_LE(now, after);
}

TEST(SystemClockTest, SleepsAtLeastAsLongAsAsked)
{
    SystemClock clock;
    const auto start = std::chrono::steady_clock::now();
    await(clock.sleep(60ms));
    EXPECT_GE(std::chrono::steady_clock::now() - start, 55ms);
    await(clock.sleep(-5ms));
}

TEST(SystemClockTest, RepeatsUntilDestroyed)
{
    SystemClock clock;
    int calls = 0;
    auto timer = clock.repeat(5ms, [&] { ++calls; });
    EXPECT_TRUE(eventually([&] { return calls >= 3; }));
    timer.reset();
    const int last = calls;
    await(clock.sleep(30ms));
    EXPECT_EQ(calls, last);
}

TEST(SystemClockTest, ATimerMayEndItselfInItsCallback)
{
    SystemClock clock;
    std::unique_ptr<RepeatingTimer> timer;
    int calls = 0;
    timer = clock.repeat(1ms, [&] {
        ++calls;
        timer.reset();
    });
    EXPECT_TRUE(eventually([&] { return calls == 1; }));
    await(clock.sleep(20ms));
    EXPECT_EQ(calls, 1);
}

} // namespace
} // namespace tessary
