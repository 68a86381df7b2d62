#include "media/PlayerScripts.h"

#include "platform/ScriptRunner.h"

#include <gtest/gtest.h>
#include <limits>

namespace brindle {
namespace {

using namespace Qt::StringLiterals;
using PlayerScripts::music;
using PlayerScripts::spotify;

constexpr Date now = Date::fromSecondsSince1970(1'800'000'000);

QList<ScriptDescriptor> song(double duration)
{
    return {ScriptDescriptor::text(u"Song"_s), ScriptDescriptor::text(u"Band"_s),
        ScriptDescriptor::text(u"Album"_s), ScriptDescriptor::number(duration),
        ScriptDescriptor::number(12.5), ScriptDescriptor::text(u"playing"_s)};
}

std::optional<NowPlayingTrack> read(const QList<ScriptDescriptor> &items, const QString &player = music)
{
    return PlayerScripts::track(ScriptDescriptor::list(items), player, now);
}

TEST(PlayerScripts, MusicIsAskedInTheseWords)
{
    EXPECT_EQ(PlayerScripts::nowPlaying(music).toStdString(),
        R"(tell application id "com.apple.Music"
    if player state is stopped then return missing value
    set currentItem to current track
    return {name of currentItem, artist of currentItem, album of currentItem, (duration of currentItem) as real, (player position) as real, (player state) as text}
end tell)");
}

TEST(PlayerScripts, SpotifyIsAskedInTheseWords)
{
    EXPECT_EQ(PlayerScripts::nowPlaying(spotify).toStdString(),
        R"(tell application id "com.spotify.client"
    if player state is stopped then return missing value
    set currentItem to current track
    return {name of currentItem, artist of currentItem, album of currentItem, (duration of currentItem) as real, (player position) as real, (player state) as text, artwork url of currentItem}
end tell)");
}

TEST(PlayerScripts, CommandsAreTheseWords)
{
    EXPECT_EQ(PlayerScripts::togglePlayback(spotify).toStdString(),
        R"(tell application id "com.spotify.client" to playpause)");
    EXPECT_EQ(PlayerScripts::seek(83.25, music).toStdString(),
        R"(tell application id "com.apple.Music" to set player position to 83.25)");
}

TEST(PlayerScripts, APositionIsWrittenAsDoublesUsuallyAre)
{
    const auto position = [](double seconds) {
        return PlayerScripts::seek(seconds, music).section(u' ', -1).toStdString();
    };
    EXPECT_EQ(position(30), "30.0");
    EXPECT_EQ(position(0.1), "0.1");
    EXPECT_EQ(position(100000), "100000.0");
    EXPECT_EQ(position(1234.000001), "1234.000001");
    EXPECT_EQ(position(1e-5), "1e-05");
    EXPECT_EQ(position(1e16), "1e+16");
}

TEST(PlayerScripts, APositionBeforeTheStartBecomesTheStart)
{
    EXPECT_EQ(PlayerScripts::seek(-4, music).section(u' ', -1), u"0.0"_s);
    EXPECT_EQ(PlayerScripts::seek(-0.0, music).section(u' ', -1).toDouble(), 0);
}

TEST(PlayerScripts, AnAnswerBecomesATrack)
{
    const auto track = read(song(215));
    ASSERT_TRUE(track);
    NowPlayingTrack expected;
    expected.title = u"Song"_s;
    expected.artist = u"Band"_s;
    expected.album = u"Album"_s;
    expected.duration = 215;
    expected.elapsed = 12.5;
    expected.isPlaying = true;
    expected.playbackRate = 1;
    expected.sourceName = u"Music"_s;
    expected.sourceBundleIdentifier = music;
    EXPECT_EQ(*track, expected);
    EXPECT_EQ(track->elapsedUpdatedAt, now);
    EXPECT_FALSE(track->sourceIcon);
    EXPECT_EQ(read(song(1), spotify)->sourceName, u"Spotify"_s);
}

TEST(PlayerScripts, ADurationFromSpotifyIsInMillisecondsAndOneFromMusicInSeconds)
{
    EXPECT_EQ(read(song(215'000), spotify)->duration, 215.0);
    EXPECT_EQ(read(song(215.0), music)->duration, 215.0);
}

TEST(PlayerScripts, APositionIsInSecondsFromBoth)
{
    EXPECT_EQ(read(song(1), spotify)->elapsed, 12.5);
    EXPECT_EQ(read(song(1), music)->elapsed, 12.5);
}

TEST(PlayerScripts, AnAnswerWithOnlyFiveItemsGivesNoTrack)
{
    auto items = song(215);
    items.removeLast();
    EXPECT_FALSE(read(items));
}

TEST(PlayerScripts, APausedPlayerGivesATrackThatIsNotPlaying)
{
    auto items = song(215);
    items[5] = ScriptDescriptor::text(u"paused"_s);
    ASSERT_TRUE(read(items));
    EXPECT_FALSE(read(items)->isPlaying);
    EXPECT_EQ(read(items)->playbackRate, 1);
}

TEST(PlayerScripts, TheStateIsReadInAnyCase)
{
    auto items = song(215);
    items[5] = ScriptDescriptor::text(u"Playing"_s);
    EXPECT_TRUE(read(items)->isPlaying);
    items[5] = ScriptDescriptor::missing();
    EXPECT_FALSE(read(items)->isPlaying);
}

TEST(PlayerScripts, WithoutATitleThereIsNoTrack)
{
    auto items = song(215);
    items[0] = ScriptDescriptor::text(QString());
    EXPECT_FALSE(read(items));
    items[0] = ScriptDescriptor::missing();
    EXPECT_FALSE(read(items));
}

TEST(PlayerScripts, AnAnswerThatIsNoListGivesNoTrack)
{
    EXPECT_FALSE(PlayerScripts::track(ScriptDescriptor::missing(), music, now));
    EXPECT_FALSE(PlayerScripts::track(ScriptDescriptor::text(u"Song"_s), music, now));
}

TEST(PlayerScripts, WhatASongLacksIsAbsent)
{
    auto items = song(0);
    items[1] = ScriptDescriptor::missing();
    items[2] = ScriptDescriptor::missing();
    const auto track = read(items);
    ASSERT_TRUE(track);
    EXPECT_FALSE(track->artist);
    EXPECT_FALSE(track->album);
    EXPECT_FALSE(track->duration);
    EXPECT_FALSE(read(song(-3))->duration);
    EXPECT_FALSE(read(song(std::numeric_limits<double>::quiet_NaN()))->duration);
}

TEST(PlayerScripts, ArtworkIsTheAddressInTheSeventhItemIfItIsOne)
{
    auto items = song(215);
    EXPECT_FALSE(read(items, spotify)->artworkURL);
    items.append(ScriptDescriptor::text(u"https://pictures.example/a.jpg"_s));
    EXPECT_EQ(read(items, spotify)->artworkURL, QUrl(u"https://pictures.example/a.jpg"_s));
    items[6] = ScriptDescriptor::missing();
    EXPECT_FALSE(read(items, spotify)->artworkURL);
    for (const auto &text : {u""_s, u"https://[broken"_s, u"no address at all"_s}) {
        items[6] = ScriptDescriptor::text(text);
        EXPECT_FALSE(read(items, spotify)->artworkURL) << text.toStdString();
    }
}

} // namespace
} // namespace brindle
