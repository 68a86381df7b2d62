#include "media/NowPlayingTrack.h"

#include <gtest/gtest.h>

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

} // namespace
} // namespace brindle
