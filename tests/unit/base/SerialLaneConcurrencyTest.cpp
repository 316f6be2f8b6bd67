#include "base/SerialLane.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

namespace tessary {
namespace {

// Nothing here passes through Qt's event queue, which ThreadSanitizer cannot see into.

TEST(SerialLaneConcurrencyTest, NeverRunsTwoPiecesOfWorkAtOnce)
{
    int unguarded = 0; // a race, should two pieces ever overlap
    {
        SerialLane lane(QStringLiteral("exclusive"));
        constexpr int kPosters = 4;
        std::vector<std::jthread> posters;
        posters.reserve(kPosters);
        for (int poster = 0; poster < kPosters; ++poster) {
            posters.emplace_back([&] {
                for (int i = 0; i < 500; ++i)
                    lane.postDetached([&unguarded] { ++unguarded; });
            });
        }
        posters.clear();
    }
    EXPECT_EQ(unguarded, 2000);
}

TEST(SerialLaneConcurrencyTest, WorkMayPostFurtherWork)
{
    std::atomic<int> done = 0;
    {
        SerialLane lane(QStringLiteral("chain"));
        lane.postDetached([&] {
            ++done;
            lane.postDetached([&] { ++done; });
        });
    }
    EXPECT_EQ(done, 2);
}

} // namespace
} // namespace tessary
