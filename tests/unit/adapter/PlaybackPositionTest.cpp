#include "adapter/linux/PlaybackPosition.h"

#include <gmock/gmock.h>

namespace brindle::adapter {
namespace {

const Date start = Date::fromSecondsSince1970(1000);

/// Playing at the usual speed, read at 10 s, and told by then.
PlaybackPosition playing()
{
    PlaybackPosition position;
    position.setSpeed(1, start);
    position.read(10, start);
    return position;
}

TEST(PlaybackPosition, IsUnknownUntilItIsRead)
{
    PlaybackPosition position;
    position.setSpeed(1, start);
    position.beginTrack(start);
    EXPECT_FALSE(position.anchor());
    position.read(3, start);
    ASSERT_TRUE(position.anchor());
    EXPECT_EQ(position.anchor()->elapsed, 3);
    EXPECT_EQ(position.anchor()->at, start);
}

TEST(PlaybackPosition, KeepsItsCourseWhileItRunsOnAsExpected)
{
    PlaybackPosition position = playing();
    const int course = position.course();
    position.read(15.1, start + 5);
    EXPECT_EQ(position.course(), course);
    EXPECT_EQ(position.anchor()->elapsed, 10);
}

TEST(PlaybackPosition, LeavesItsCourseWhenAReadingIsFarOff)
{
    PlaybackPosition position = playing();
    const int course = position.course();
    position.read(10, start + 5);
    EXPECT_NE(position.course(), course);
    EXPECT_EQ(position.anchor()->elapsed, 10);
    EXPECT_EQ(position.anchor()->at, start + 5);
}

TEST(PlaybackPosition, AReadingAtTheToleranceIsFarOff)
{
    PlaybackPosition position = playing();
    const int course = position.course();
    position.read(10 + PlaybackPosition::tolerance, start);
    EXPECT_NE(position.course(), course);
}

TEST(PlaybackPosition, AJumpCountsHoweverSmall)
{
    PlaybackPosition position = playing();
    const int course = position.course();
    position.jump(15.01, start + 5);
    EXPECT_NE(position.course(), course);
    EXPECT_EQ(position.anchor()->elapsed, 15.01);
}

TEST(PlaybackPosition, APauseHoldsItWhereItWas)
{
    PlaybackPosition position = playing();
    const int course = position.course();
    position.setSpeed(0, start + 2);
    EXPECT_NE(position.course(), course);
    EXPECT_EQ(position.anchor()->elapsed, 12);
    EXPECT_EQ(position.anchor()->at, start + 2);
    const int paused = position.course();
    position.read(12, start + 100);
    EXPECT_EQ(position.course(), paused);
}

TEST(PlaybackPosition, FollowsTheSpeed)
{
    PlaybackPosition position = playing();
    position.setSpeed(2, start + 1);
    EXPECT_EQ(position.anchor()->elapsed, 11);
    const int course = position.course();
    position.read(17, start + 4);
    EXPECT_EQ(position.course(), course);
}

TEST(PlaybackPosition, TheReadingAfterAGuessIsBetterThanTheGuess)
{
    PlaybackPosition position = playing();
    position.setSpeed(0, start + 2);
    const int guessed = position.course();
    position.read(12.1, start + 2.01);
    EXPECT_EQ(position.anchor()->elapsed, 12.1);
    EXPECT_EQ(position.course(), guessed);
}

TEST(PlaybackPosition, AnotherTrackBeginsAtItsStart)
{
    PlaybackPosition position = playing();
    const int course = position.course();
    position.beginTrack(start + 3);
    EXPECT_NE(position.course(), course);
    EXPECT_EQ(position.anchor()->elapsed, 0);
    EXPECT_EQ(position.anchor()->at, start + 3);
}

TEST(PlaybackPosition, IsUnknownAgainWhenThePlayerNoLongerTells)
{
    PlaybackPosition position = playing();
    const int course = position.course();
    position.read(std::nullopt, start + 1);
    EXPECT_FALSE(position.anchor());
    EXPECT_NE(position.course(), course);
    const int unknown = position.course();
    position.read(std::nullopt, start + 2);
    EXPECT_EQ(position.course(), unknown);
}

TEST(PlaybackPosition, IsNeverBeforeTheStart)
{
    PlaybackPosition position = playing();
    position.jump(-3, start);
    EXPECT_EQ(position.anchor()->elapsed, 0);
}

TEST(PlaybackPosition, CountsWhatMayMoveItButNotReadings)
{
    PlaybackPosition position = playing();
    int events = position.events();
    position.read(500, start);
    EXPECT_EQ(position.events(), events);
    position.beginTrack(start);
    EXPECT_NE(position.events(), events);
    events = position.events();
    position.jump(1, start);
    EXPECT_NE(position.events(), events);
    events = position.events();
    position.setSpeed(0, start);
    EXPECT_NE(position.events(), events);
    events = position.events();
    position.setSpeed(0, start);
    EXPECT_EQ(position.events(), events);
}

} // namespace
} // namespace brindle::adapter
