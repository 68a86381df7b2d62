#include "media/NowPlayingTrack.h"

#include <gtest/gtest.h>
#include <limits>

namespace brindle {
namespace {

NowPlayingTrack song()
{
    NowPlayingTrack track;
    track.title = QStringLiteral("Song");
    track.artist = QStringLiteral("Band");
    track.sourceName = QStringLiteral("Player");
    track.sourceBundleIdentifier = QStringLiteral("org.player");
    return track;
}

TEST(NowPlayingTrack, TheSessionKeyNamesTheSourceAndFallsBackToTheSong)
{
    auto track = song();
    EXPECT_EQ(track.sessionKey(), QStringLiteral("org.player"));
    track.sourceBundleIdentifier.reset();
    EXPECT_EQ(track.sessionKey(), QStringLiteral("Player"));
    track.sourceName.reset();
    EXPECT_EQ(track.sessionKey(), QStringLiteral("Song|Band"));
    track.artist.reset();
    EXPECT_EQ(track.sessionKey(), QStringLiteral("Song|"));
}

TEST(NowPlayingTrack, ThePresentationIdChangesWithTheSong)
{
    auto track = song();
    EXPECT_EQ(track.presentationID(), QStringLiteral("org.player|Song|Band||"));
    track.sourceBundleIdentifier.reset();
    track.sourceName.reset();
    track.artworkURL = QUrl(QStringLiteral("https://example.org/a.png"));
    EXPECT_EQ(track.presentationID(), QStringLiteral("unknown-source|Song|Band||https://example.org/a.png"));
}

TEST(NowPlayingTrack, ARepeatedPositionAtALaterTimeIsNoChange)
{
    auto track = song();
    auto later = track;
    later.elapsedUpdatedAt = Date::fromSecondsSince1970(10);
    later.sourceIcon = QImage(4, 4, QImage::Format_ARGB32);
    EXPECT_EQ(track, later);
    later.elapsed = 3.0;
    EXPECT_NE(track, later);
}

TEST(NowPlayingTrack, ArtworkThatAppearsIsAChange)
{
    const auto track = song();
    auto withArtwork = track;
    withArtwork.artwork = QImage(4, 4, QImage::Format_ARGB32);
    EXPECT_NE(track, withArtwork);
}

TEST(CurrentElapsed, APlayingTrackMovesOnAtItsRate)
{
    auto track = song();
    track.isPlaying = true;
    track.playbackRate = 1.5;
    track.elapsed = 10;
    track.elapsedUpdatedAt = Date::fromSecondsSince1970(100);
    EXPECT_DOUBLE_EQ(currentElapsed(track, Date::fromSecondsSince1970(104)), 16);
    track.isPlaying = false;
    EXPECT_DOUBLE_EQ(currentElapsed(track, Date::fromSecondsSince1970(104)), 10);
}

TEST(CurrentElapsed, NeverRunsBackwards)
{
    auto track = song();
    track.isPlaying = true;
    track.elapsed = 10;
    track.elapsedUpdatedAt = Date::fromSecondsSince1970(100);
    EXPECT_DOUBLE_EQ(currentElapsed(track, Date::fromSecondsSince1970(90)), 10) << "the clock was set back";
    track.playbackRate = -2;
    EXPECT_DOUBLE_EQ(currentElapsed(track, Date::fromSecondsSince1970(104)), 10) << "a player that rewinds";
}

TEST(CurrentElapsed, StaysWithinTheTrack)
{
    auto track = song();
    track.isPlaying = true;
    track.duration = 12;
    track.elapsedUpdatedAt = Date::fromSecondsSince1970(100);
    EXPECT_DOUBLE_EQ(currentElapsed(track, Date::fromSecondsSince1970(105)), 5) << "no position counts as 0";
    EXPECT_DOUBLE_EQ(currentElapsed(track, Date::fromSecondsSince1970(200)), 12);
    track.elapsed = -4;
    EXPECT_DOUBLE_EQ(currentElapsed(track, Date::fromSecondsSince1970(100)), 0);
}

TEST(CurrentElapsed, WhatIsNoNumberLeavesAPosition)
{
    auto track = song();
    track.isPlaying = true;
    track.duration = 12;
    track.elapsedUpdatedAt = Date::fromSecondsSince1970(100);
    track.playbackRate = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(currentElapsed(track, Date::fromSecondsSince1970(104)), 0);
    track.playbackRate = std::numeric_limits<double>::infinity();
    EXPECT_EQ(currentElapsed(track, Date::fromSecondsSince1970(100)), 0) << "no time at an endless rate";
    EXPECT_EQ(currentElapsed(track, Date::fromSecondsSince1970(101)), 12);
}

} // namespace
} // namespace brindle
