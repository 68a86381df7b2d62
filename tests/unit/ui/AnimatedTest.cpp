#include "ui/Animated.h"

#include "foundation/ManualScheduler.h"
#include "support/ManualFrames.h"
#include "ui/Timeline.h"

#include <QSignalSpy>

#include <gtest/gtest.h>

namespace brindle {
namespace {

class AnimatedTest : public testing::Test
{
protected:
    void pass(int milliseconds)
    {
        for (; milliseconds > 0; milliseconds -= 10)
            frames.advanceBy(10);
    }

    ManualFrames frames;
    Animated animated;
    QSignalSpy changes{&animated, &Animated::valueChanged};
    QSignalSpy arrivals{&animated, &Animated::settled};
};

TEST_F(AnimatedTest, WhatIsSetWhileItIsMadeIsThereAtOnce)
{
    animated.classBegin();
    animated.setMotion(Motion::makeSpring(0.4, 0.9));
    animated.setTo(7);
    animated.componentComplete();
    EXPECT_EQ(animated.value(), 7);
    EXPECT_FALSE(animated.isMoving());
}

TEST_F(AnimatedTest, SetsOutFromWhereItIsTold)
{
    animated.classBegin();
    animated.setMotion(Motion::makeEaseOut(0.2));
    animated.setFrom(0);
    animated.setTo(1);
    animated.componentComplete();
    EXPECT_LT(animated.value(), 0.5);
    EXPECT_TRUE(animated.isMoving());
    pass(300);
    EXPECT_EQ(animated.value(), 1);
    EXPECT_EQ(arrivals.count(), 1);
}

TEST_F(AnimatedTest, TheFirstFrameShowsAChange)
{
    animated.setMotion(Motion::makeSpring(0.48, 0.92));
    animated.setTo(100);
    EXPECT_GT(animated.value(), 0);
    EXPECT_LT(animated.value(), 5);
}

TEST_F(AnimatedTest, ADelayAtItsStartMakesItNoFaster)
{
    animated.setMotion(Motion::makeEaseInOut(1));
    animated.setTo(1);
    frames.advanceBy(500);
    EXPECT_LT(animated.value(), 0.01);
}

TEST_F(AnimatedTest, AtRestNothingChangesAnyMore)
{
    animated.setMotion(Motion::makeSpring(0.34, 0.72));
    animated.setTo(1);
    pass(2000);
    EXPECT_FALSE(animated.isMoving());
    EXPECT_EQ(arrivals.count(), 1);
    changes.clear();
    pass(2000);
    EXPECT_TRUE(changes.isEmpty());
}

TEST_F(AnimatedTest, FallsByItsOwnMotionWhereThereIsOne)
{
    animated.setMotion(Motion::makeEaseInOut(0.1));
    animated.setFallingMotion(Motion::makeEaseInOut(1));
    animated.setTo(1);
    pass(200);
    ASSERT_EQ(animated.value(), 1);
    animated.setTo(0);
    pass(200);
    EXPECT_GT(animated.value(), 0.5);
    pass(1000);
    EXPECT_EQ(animated.value(), 0);
}

TEST_F(AnimatedTest, WithoutAMotionItArrivesAtOnceAndSaysSo)
{
    animated.setTo(3);
    EXPECT_EQ(animated.value(), 3);
    EXPECT_EQ(arrivals.count(), 1);
}

class TimelineTest : public testing::Test
{
protected:
    ManualScheduler time;
    Clock clock{time};
};

TEST_F(TimelineTest, TicksAtOnceAndThenAtItsInterval)
{
    Timeline timeline;
    timeline.setInterval(60);
    QSignalSpy ticks(&timeline, &Timeline::ticked);
    time.advance(5);
    timeline.setClock(&clock);
    EXPECT_NEAR(timeline.seconds(), 5, 1e-9);
    ticks.clear();
    time.advance(59.9);
    EXPECT_EQ(ticks.count(), 0);
    time.advance(0.2);
    EXPECT_EQ(ticks.count(), 1);
    EXPECT_NEAR(timeline.seconds(), 65, 0.2);
}

TEST_F(TimelineTest, WakesNothingWhileItDoesNotRun)
{
    Timeline timeline;
    timeline.setRunning(false);
    timeline.setClock(&clock);
    EXPECT_EQ(time.pendingCount(), 0);
    timeline.setRunning(true);
    EXPECT_EQ(time.pendingCount(), 1);
    timeline.setRunning(false);
    EXPECT_EQ(time.pendingCount(), 0);
}

TEST_F(TimelineTest, EndsWithItsView)
{
    {
        Timeline timeline;
        timeline.setClock(&clock);
        ASSERT_EQ(time.pendingCount(), 1);
    }
    EXPECT_EQ(time.pendingCount(), 0);
}

} // namespace
} // namespace brindle
