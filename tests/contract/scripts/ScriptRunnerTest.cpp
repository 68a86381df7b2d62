#include "contract/scripts/LinuxScriptWorld.h"
#include "contract/scripts/ScriptWorld.h"

#include <gmock/gmock.h>

namespace brindle::test {

namespace {

using namespace Qt::StringLiterals;
using PlayerScripts::spotify;
using testing::ElementsAre;
using enum ScriptOutcome::Status;

} // namespace

/// What the port promises, whoever keeps it.
template <typename World> class ScriptRunnerContract : public testing::Test
{
protected:
    World world;
};

using Worlds = testing::Types<FakeScriptWorld, LinuxScriptWorld>;
TYPED_TEST_SUITE(ScriptRunnerContract, Worlds);

TYPED_TEST(ScriptRunnerContract, APlayerTellsWhatIsOn)
{
    const Song song;
    this->world.spotifyPlays(song);
    const auto outcome = this->world.run(PlayerScripts::nowPlaying(spotify));
    EXPECT_EQ(outcome.status, executed);
    EXPECT_EQ(outcome.result, song.descriptor());
}

TYPED_TEST(ScriptRunnerContract, APausedPlayerTellsSo)
{
    const Song song{.state = u"paused"_s};
    this->world.spotifyPlays(song);
    EXPECT_EQ(this->world.run(PlayerScripts::nowPlaying(spotify)).result, song.descriptor());
}

TYPED_TEST(ScriptRunnerContract, AStoppedPlayerGivesTheMissingValue)
{
    this->world.spotifyStops();
    const auto outcome = this->world.run(PlayerScripts::nowPlaying(spotify));
    EXPECT_EQ(outcome.status, executed);
    EXPECT_EQ(outcome.result, ScriptDescriptor::missing());
}

TYPED_TEST(ScriptRunnerContract, AnApplicationThatIsNotThereFails)
{
    for (const QString &source :
        {PlayerScripts::nowPlaying(spotify), PlayerScripts::nowPlaying(PlayerScripts::music),
            PlayerScripts::togglePlayback(spotify), PlayerScripts::togglePlayback(PlayerScripts::music),
            PlayerScripts::seek(3, spotify), PlayerScripts::seek(3, PlayerScripts::music),
            BrowserScripts::nowPlaying({u"com.apple.Safari"_s, u"Safari"_s, BrowserFamily::safari})}) {
        const auto outcome = this->world.run(source);
        EXPECT_EQ(outcome.status, failed) << source.toStdString();
        EXPECT_EQ(outcome.result, std::nullopt);
    }
}

TYPED_TEST(ScriptRunnerContract, WhatIsNoScriptDoesNotRun)
{
    const auto outcome = this->world.run(u"tell application id \"com.spotify.client\" to quit"_s);
    EXPECT_NE(outcome.status, executed);
    EXPECT_EQ(outcome.result, std::nullopt);
}

TYPED_TEST(ScriptRunnerContract, CommandsReachThePlayerAndGiveNothing)
{
    this->world.spotifyPlays({});
    for (const QString &source :
        {PlayerScripts::togglePlayback(spotify), PlayerScripts::seek(30.5, spotify)}) {
        const auto outcome = this->world.run(source);
        EXPECT_EQ(outcome.status, executed);
        EXPECT_EQ(outcome.result, std::nullopt);
    }
    EXPECT_THAT(this->world.commands(), ElementsAre(u"PlayPause"_s, u"SetPosition 30.5"_s));
}

TYPED_TEST(ScriptRunnerContract, OfTwoTabsTheSecondIsToldIfItPlaysThoughTheFirstHoldsAPausedVideo)
{
    this->world.tabsSay({mediaState(false, u"First"_s), mediaState(true, u"Second"_s)});
    EXPECT_EQ(this->world.run(BrowserScripts::nowPlaying(chromium)).result,
        ScriptDescriptor::text(mediaState(true, u"Second"_s)));
}

TYPED_TEST(ScriptRunnerContract, WhenNoTabPlaysTheFirstPausedOneIsTold)
{
    this->world.tabsSay({u""_s, mediaState(false, u"First"_s), mediaState(false, u"Second"_s)});
    EXPECT_EQ(this->world.run(BrowserScripts::nowPlaying(chromium)).result,
        ScriptDescriptor::text(mediaState(false, u"First"_s)));
}

TYPED_TEST(ScriptRunnerContract, TabsWithoutMediaGiveTheEmptyText)
{
    this->world.tabsSay({u""_s, u""_s});
    const auto outcome = this->world.run(BrowserScripts::nowPlaying(chromium));
    EXPECT_EQ(outcome.status, executed);
    EXPECT_EQ(outcome.result, ScriptDescriptor::text(QString()));
}

} // namespace brindle::test
