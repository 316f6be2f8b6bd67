#include "base/ExpendableLane.h"

#include "tests/support/Await.h"

#include <QCoreApplication>

#include <semaphore>

namespace tessary {
namespace {

using testing::await;
using testing::eventually;

/// What hangs until it is let go; owned by the work as well, as everything must be.
struct Gate {
    std::counting_semaphore<2> open{0};
    std::atomic<bool> isPassed = false;
};

QCoro::Task<int> passing(ExpendableLane& lane, std::shared_ptr<Gate> gate, std::stop_token giveUp)
{
    auto work = lane.post(
        [gate] {
            gate->open.acquire();
            gate->isPassed = true;
            return 7;
        },
        giveUp);
    const int result = co_await work;
    co_return result;
}

TEST(ExpendableLaneTest, BringsTheResultOrTheVeryExceptionHome)
{
    ExpendableLane lane(QStringLiteral("home"));
    const auto gate = std::make_shared<Gate>();
    gate->open.release();
    EXPECT_EQ(await(passing(lane, gate, {})), 7);
    const auto failing = [](ExpendableLane& worker) -> QCoro::Task<> {
        auto work = worker.post([] { throw std::out_of_range("beyond"); });
        co_await work;
    };
    EXPECT_THROW(await(failing(lane)), std::out_of_range);
}

TEST(ExpendableLaneTest, GivesUpWhatHangsAndWhatWaitsBehindIt)
{
    ExpendableLane lane(QStringLiteral("hung"));
    const auto gate = std::make_shared<Gate>();
    std::stop_source stop;
    auto first = passing(lane, gate, stop.get_token());
    auto second = passing(lane, gate, stop.get_token());
    stop.request_stop();
    EXPECT_FALSE(first.isReady()); // not from within the request
    EXPECT_THROW(await(std::move(first)), Abandoned);
    EXPECT_THROW(await(std::move(second)), Abandoned);
    EXPECT_FALSE(gate->isPassed);
    gate->open.release(2);
}

TEST(ExpendableLaneTest, WhatWasGivenUpBeforehandIsNotWaitedForEither)
{
    ExpendableLane lane(QStringLiteral("late"));
    const auto gate = std::make_shared<Gate>();
    std::stop_source stop;
    stop.request_stop();
    EXPECT_THROW(await(passing(lane, gate, stop.get_token())), Abandoned);
    gate->open.release();
}

TEST(ExpendableLaneTest, GoesWithoutWaitingAndLeavesTheThreadToItsWork)
{
    const auto gate = std::make_shared<Gate>();
    std::stop_source stop;
    auto lane = std::make_unique<ExpendableLane>(QStringLiteral("gone"));
    auto task = passing(*lane, gate, stop.get_token());
    lane.reset();
    EXPECT_FALSE(gate->isPassed);
    gate->open.release();
    EXPECT_EQ(await(std::move(task)), 7) << "the caller still gets what came";
    EXPECT_TRUE(eventually([&] { return gate.use_count() == 1; })) << "the thread lets go of everything";
}

TEST(ExpendableLaneTest, AResultThatComesAfterItWasGivenUpIsDropped)
{
    ExpendableLane lane(QStringLiteral("dropped"));
    const auto gate = std::make_shared<Gate>();
    std::stop_source stop;
    auto task = passing(lane, gate, stop.get_token());
    stop.request_stop();
    EXPECT_THROW(await(std::move(task)), Abandoned);
    gate->open.release();
    EXPECT_TRUE(eventually([&] { return gate.use_count() == 1; }));
    EXPECT_TRUE(gate->isPassed);
}

} // namespace
} // namespace tessary
