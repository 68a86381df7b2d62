#include "island/AudioBars.h"
#include "island/AudioWaveform.h"
#include "island/FluidLevelBar.h"
#include "island/FluidSystemLevel.h"

#include <cmath>
#include <gtest/gtest.h>

namespace brindle {
namespace {

TEST(AudioWaveform, WithoutSoundAllBarsAreLow)
{
    for (int index = 0; index < AudioWaveform::barCount; ++index) {
        for (const double volume : {0.0, 0.001, -1.0, std::nan("")})
            EXPECT_DOUBLE_EQ(AudioWaveform::barHeight(index, 12.3, volume), 2.4);
    }
}

TEST(AudioWaveform, AtFullSoundBarsStayBetweenTheirBounds)
{
    double least = 100;
    double greatest = 0;
    for (int step = 0; step < 20000; ++step) {
        for (int index = 0; index < AudioWaveform::barCount; ++index) {
            const double height = AudioWaveform::barHeight(index, step * 0.01, 1);
            least = std::min(least, height);
            greatest = std::max(greatest, height);
        }
    }
    EXPECT_GE(least, 6.096 - 1e-9);
    EXPECT_LE(greatest, 15.6 + 1e-9);
    EXPECT_LT(least, 6.6);
    EXPECT_GT(greatest, 15);
}

TEST(AudioWaveform, ABarHasTheHeightOfItsFormula)
{
    const double phase = 2 * 1.31 + (2 * 0.34 + 7.2) * 5;
    const double swing = (std::sin(phase) + 1) * 0.5 * 0.48;
    const double drift = (std::sin(2 * 0.82 + phase * 0.53) + 1) * 0.5 * 0.24;
    const double height = std::pow(0.5, 0.62) * (swing + 0.28 + drift) * 13.2 + 2.4;
    EXPECT_DOUBLE_EQ(AudioWaveform::barHeight(2, 5, 0.5), height);
}

TEST(AudioWaveform, MoreThanFullSoundIsFullSound)
{
    EXPECT_EQ(AudioWaveform::barHeight(3, 1, 7), AudioWaveform::barHeight(3, 1, 1));
}

TEST(AudioWaveform, IsDrawnAtTwentyFourPicturesASecond)
{
    EXPECT_DOUBLE_EQ(AudioBars::interval(), 1.0 / 24);
}

TEST(FluidSystemLevel, ATinyLevelShowsAFillOfTheTracksHeight)
{
    const auto level = FluidSystemLevel::geometry({62, 12}, 0.004, 0, false);
    EXPECT_EQ(level.fill.width(), 7);
    EXPECT_EQ(level.fill.height(), 7);
}

TEST(FluidSystemLevel, AThousandthAndBelowIsEmpty)
{
    for (const double value : {0.001, 0.0, -1.0, std::nan("")}) {
        const auto level = FluidSystemLevel::geometry({62, 12}, value, 3, true);
        EXPECT_TRUE(level.fill.isEmpty());
        EXPECT_TRUE(level.head.isEmpty());
        EXPECT_EQ(level.track.width(), 62);
    }
}

TEST(FluidSystemLevel, ALevelAboveFullIsFull)
{
    EXPECT_EQ(FluidSystemLevel::geometry({62, 12}, 1.5, 0, false).fill.width(), 62);
    EXPECT_EQ(FluidSystemLevel::geometry({62, 12}, 1, 0, false).fill.width(), 62);
    EXPECT_EQ(FluidSystemLevel::geometry({5, 12}, 1.5, 0, false).fill.width(), 7);
}

TEST(FluidSystemLevel, TheTrackIsFiveToSevenPointsHighAndInTheMiddle)
{
    EXPECT_EQ(FluidSystemLevel::geometry({62, 12}, 1, 0, false).track, QRectF(0, 2.5, 62, 7));
    EXPECT_EQ(FluidSystemLevel::geometry({46, 8}, 1, 0, false).track, QRectF(0, 0.5, 46, 7));
    EXPECT_EQ(FluidSystemLevel::geometry({46, 6}, 1, 0, false).track.height(), 6);
    EXPECT_EQ(FluidSystemLevel::geometry({46, 2}, 1, 0, false).track.height(), 5);
}

TEST(FluidSystemLevel, TheHeadPulsesAndWobblesWithTime)
{
    const double seconds = 3.21;
    const double pulse = (std::sin(seconds * 7.4) + 1) * 0.5;
    const double wobble = std::sin(seconds * 7.4 * 0.73) * 0.9;
    const auto level = FluidSystemLevel::geometry({62, 12}, 0.5, seconds, true);
    EXPECT_DOUBLE_EQ(level.head.width(), 7 + pulse * 1.6);
    EXPECT_DOUBLE_EQ(level.head.left(), 31 - 7 + wobble);
    EXPECT_DOUBLE_EQ(level.head.center().y(), 6);
    EXPECT_DOUBLE_EQ(level.trail.width(), 7 * 0.72);
    EXPECT_DOUBLE_EQ(level.trail.left(), 31 - 7 * 1.35 - wobble);
    EXPECT_DOUBLE_EQ(level.trail.center().y(), 6 + (pulse - 0.5) * 1.1);
}

TEST(FluidSystemLevel, NoCircleLeavesTheTrackOnTheLeft)
{
    for (double seconds = 0; seconds < 10; seconds += 0.1) {
        const auto level = FluidSystemLevel::geometry({62, 12}, 0.01, seconds, true);
        EXPECT_GE(level.head.left(), 0);
        EXPECT_GE(level.trail.left(), 0);
    }
}

TEST(FluidSystemLevel, HeldStillItIsTheSameAtAllTimes)
{
    const auto now = FluidSystemLevel::geometry({62, 12}, 0.5, 0.3, false);
    const auto later = FluidSystemLevel::geometry({62, 12}, 0.5, 7.9, false);
    EXPECT_EQ(now.head, later.head);
    EXPECT_EQ(now.trail, later.trail);
    EXPECT_EQ(now.head.width(), 7);
}

TEST(FluidSystemLevel, IsDrawnAtMostThirtyTimesASecond)
{
    EXPECT_GE(FluidLevelBar::interval(), 1.0 / 30);
}

} // namespace
} // namespace brindle
