#include "foundation/ManualScheduler.h"

#include <gmock/gmock.h>

namespace brindle {
namespace {

TEST(ManualScheduler, WorkSeesTheExactMomentOfItsDeadline)
{
    const Date start = Date::fromReferenceSeconds(1000);
    ManualScheduler time(start);
    std::vector<double> moments;
    const Delay first = time.after(0.25, [&] { moments.push_back(time.uptime()); });
    const Delay second = time.after(0.5, [&] { moments.push_back(time.now() - start); });
    time.advance(2);
    EXPECT_THAT(moments, testing::ElementsAre(0.25, 0.5));
    EXPECT_EQ(time.uptime(), 2);
    EXPECT_EQ(time.now() - start, 2);
}

TEST(ManualScheduler, WorkThatWorkAsksForRunsInTheSameAdvanceIfItFallsDue)
{
    ManualScheduler time;
    std::vector<double> moments;
    Delay inner;
    const Delay outer = time.after(1, [&] {
        inner = time.after(0.5, [&] { moments.push_back(time.uptime()); });
        time.post([&] { moments.push_back(time.uptime()); });
    });
    time.advance(2);
    EXPECT_THAT(moments, testing::ElementsAre(1, 1.5));
}

TEST(ManualScheduler, WhatIsNotDueYetWaits)
{
    ManualScheduler time;
    const Delay delay = time.after(1, [] { FAIL(); });
    time.advance(0.999);
    EXPECT_TRUE(delay.isPending());
    EXPECT_EQ(time.pendingCount(), 1);
}

TEST(ManualScheduler, AWholeDayOfRepeatsPassesAtOnce)
{
    ManualScheduler time;
    int ran = 0;
    const Delay delay = time.every(1.25, 0.1, [&] { ++ran; });
    time.advance(86400);
    EXPECT_EQ(ran, 69120);
    EXPECT_EQ(time.wakeUps(), 69120U);
}

TEST(ManualScheduler, AJumpOfTheWallClockMovesNoDeadline)
{
    ManualScheduler time;
    const Date start = time.now();
    bool ran = false;
    const Delay delay = time.after(1, [&] { ran = true; });
    time.jumpWallClock(-3600);
    EXPECT_EQ(time.now() - start, -3600);
    EXPECT_EQ(time.uptime(), 0);
    time.advance(0.5);
    EXPECT_FALSE(ran);
    time.advance(0.5);
    EXPECT_TRUE(ran);
}

TEST(ManualScheduler, PostedWorkCanBeRunWithoutAnyTimePassing)
{
    ManualScheduler time;
    std::string ran;
    const Delay delay = time.after(0, [&] { ran += 'x'; });
    time.post([&] {
        ran += 'a';
        time.post([&] { ran += 'b'; });
    });
    time.runPosted();
    EXPECT_EQ(ran, "ab");
    EXPECT_EQ(time.uptime(), 0);
}

} // namespace
} // namespace brindle
