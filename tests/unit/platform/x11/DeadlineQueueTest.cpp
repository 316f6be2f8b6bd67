#include "platform/x11/DeadlineQueue.h"

#include <gtest/gtest.h>

#include <vector>

namespace tessary {
namespace {

using std::chrono::seconds;

class DeadlineQueueTest : public ::testing::Test {
protected:
    std::function<void()> note(int what)
    {
        return [this, what] { called.push_back(what); };
    }

    DeadlineQueue queue;
    DeadlineQueue::TimePoint start{};
    std::vector<int> called;
};

TEST_F(DeadlineQueueTest, CallsWhatIsDueEarliestFirst)
{
    queue.add(start + seconds(3), note(3));
    queue.add(start + seconds(1), note(1));
    queue.add(start + seconds(2), note(2));
    queue.runDue(start + seconds(2));
    EXPECT_EQ(called, (std::vector{1, 2}));
    EXPECT_EQ(queue.next(), start + seconds(3));
}

TEST_F(DeadlineQueueTest, KeepsTheOrderOfEqualDeadlines)
{
    for (const int what : {1, 2, 3})
        queue.add(start, note(what));
    queue.runDue(start);
    EXPECT_EQ(called, (std::vector{1, 2, 3}));
}

TEST_F(DeadlineQueueTest, ForgetsWhatIsRemovedAndIgnoresTheUnknown)
{
    const auto gone = queue.add(start, note(1));
    queue.add(start, note(2));
    queue.remove(gone);
    queue.remove(gone);
    queue.remove(9999);
    queue.runDue(start);
    EXPECT_EQ(called, std::vector{2});
    EXPECT_EQ(queue.next(), std::nullopt);
}

TEST_F(DeadlineQueueTest, ACallMayRemoveAnotherThatIsDueToo)
{
    DeadlineQueue::Id second = 0;
    queue.add(start, [&] { queue.remove(second); });
    second = queue.add(start, note(2));
    queue.runDue(start);
    EXPECT_TRUE(called.empty());
}

TEST_F(DeadlineQueueTest, ACallThatAddsItselfAgainRunsOnceATime)
{
    std::function<void()> again = [&] {
        called.push_back(0);
        queue.add(start, again);
    };
    queue.add(start, again);
    queue.runDue(start);
    EXPECT_EQ(called.size(), 1U);
    queue.runDue(start);
    EXPECT_EQ(called.size(), 2U);
}

} // namespace
} // namespace tessary
