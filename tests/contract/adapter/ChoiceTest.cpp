#include "contract/adapter/AdapterStream.h"
#include "contract/adapter/ScriptedPlayer.h"
#include "support/dbus/PrivateBus.h"

#include <gmock/gmock.h>

namespace brindle::test {
namespace {

using namespace Qt::StringLiterals;

/// A stream that runs, and players that come.
class AdapterChoice : public testing::Test
{
protected:
    AdapterChoice() { stream.waitForFirstLine(); }

    static void appearing(ScriptedPlayer &player, const QString &status, const QString &title)
    {
        player.properties.insert(u"PlaybackStatus"_s, status);
        player.properties.insert(u"Metadata"_s, track(title));
        player.appear();
    }
    /// Whether `player` stays untold: what it says comes to the stream before what another player, which
    /// quits at once, then says.
    bool isStillFollowed(const QString &title)
    {
        ScriptedPlayer passing(bus, u"passing"_s);
        passing.appearPlaying(u"Passing"_s);
        if (!stream.waitForTitle(u"Passing"_s))
            return false;
        passing.quit();
        return stream.waitFor([this] { return stream.title() != u"Passing"; }) && stream.title() == title;
    }

    PrivateBus bus;
    AdapterStream stream{bus};
    ScriptedPlayer first{bus, u"first"_s};
    ScriptedPlayer second{bus, u"second"_s};
};

TEST_F(AdapterChoice, OneThatPlaysGoesBeforeOneThatDoesNot)
{
    appearing(first, u"Paused"_s, u"Waiting"_s);
    ASSERT_TRUE(stream.waitForTitle(u"Waiting"_s));
    second.appearPlaying(u"Playing"_s);
    EXPECT_TRUE(stream.waitForTitle(u"Playing"_s));
}

TEST_F(AdapterChoice, OfThoseThatPlayTheOneThatBeganLastIsFollowed)
{
    first.appearPlaying(u"One"_s);
    ASSERT_TRUE(stream.waitForTitle(u"One"_s));
    second.appearPlaying(u"Two"_s);
    ASSERT_TRUE(stream.waitForTitle(u"Two"_s));
    first.setStatus(u"Paused"_s);
    first.setStatus(u"Playing"_s);
    EXPECT_TRUE(stream.waitForTitle(u"One"_s));
}

TEST_F(AdapterChoice, WhenNonePlaysTheOneThatPlayedLastIsFollowed)
{
    first.appearPlaying(u"One"_s);
    ASSERT_TRUE(stream.waitForTitle(u"One"_s));
    second.appearPlaying(u"Two"_s);
    ASSERT_TRUE(stream.waitForTitle(u"Two"_s));
    second.setStatus(u"Paused"_s);
    ASSERT_TRUE(stream.waitForTitle(u"One"_s));
    first.setStatus(u"Stopped"_s);
    ASSERT_TRUE(stream.waitFor([this] { return !stream.isPlaying(); }));
    EXPECT_EQ(stream.title(), u"One");
}

TEST_F(AdapterChoice, OneThatAppearsPausedTakesNobodysPlace)
{
    first.appearPlaying(u"One"_s);
    ASSERT_TRUE(stream.waitForTitle(u"One"_s));
    appearing(second, u"Paused"_s, u"Waiting"_s);
    EXPECT_TRUE(isStillFollowed(u"One"_s));
    first.setStatus(u"Paused"_s);
    ASSERT_TRUE(stream.waitFor([this] { return !stream.isPlaying(); }));
    EXPECT_EQ(stream.title(), u"One");
}

TEST_F(AdapterChoice, OneThatSaysItIsStoppedTakesNobodysPlace)
{
    first.appearPlaying(u"One"_s);
    ASSERT_TRUE(stream.waitForTitle(u"One"_s));
    appearing(second, u"Paused"_s, u"Waiting"_s);
    second.setStatus(u"Stopped"_s);
    EXPECT_TRUE(isStillFollowed(u"One"_s));
}

TEST_F(AdapterChoice, OneThatHasQuitIsGone)
{
    first.appearPlaying(u"One"_s);
    ASSERT_TRUE(stream.waitForTitle(u"One"_s));
    second.appearPlaying(u"Two"_s);
    ASSERT_TRUE(stream.waitForTitle(u"Two"_s));
    second.quit();
    EXPECT_TRUE(stream.waitForTitle(u"One"_s));
    first.quit();
    EXPECT_TRUE(stream.waitFor([this] { return stream.state().fields.isEmpty(); }));
}

TEST_F(AdapterChoice, OneThatQuitsBeforeItIsToldIsNeverTold)
{
    first.appearPlaying(u"One"_s);
    ASSERT_TRUE(stream.waitForTitle(u"One"_s));
    second.appearPlaying(u"Two"_s);
    second.quit();
    EXPECT_TRUE(isStillFollowed(u"One"_s));
    EXPECT_TRUE(std::none_of(stream.lines.begin(), stream.lines.end(), [](const QJsonObject &line) {
        return line.value(u"payload").toObject().value(u"title") == u"Two"_s;
    }));
}

TEST_F(AdapterChoice, AListThatGoesOnInTheBackgroundTakesNobodysPlace)
{
    first.appearPlaying(u"One"_s);
    ASSERT_TRUE(stream.waitForTitle(u"One"_s));
    second.appearPlaying(u"Two"_s);
    ASSERT_TRUE(stream.waitForTitle(u"Two"_s));
    first.change({{u"PlaybackStatus"_s, u"Stopped"_s}, {u"Metadata"_s, track(u"One and a half"_s)}});
    first.play(u"One and a half"_s);
    EXPECT_TRUE(isStillFollowed(u"Two"_s));
}

TEST_F(AdapterChoice, AStandInForOtherPlayersIsNotFollowed)
{
    first.appearPlaying(u"One"_s);
    ASSERT_TRUE(stream.waitForTitle(u"One"_s));
    ScriptedPlayer proxy(bus, u"playerctld"_s);
    proxy.appearPlaying(u"One, said again"_s);
    EXPECT_TRUE(isStillFollowed(u"One"_s));
}

TEST_F(AdapterChoice, AStreamThatStartsFollowsTheYoungestThatPlays)
{
    second.appearPlaying(u"Two"_s);
    first.appearPlaying(u"One"_s);
    appearing(*std::make_unique<ScriptedPlayer>(bus, u"idle"_s), u"Paused"_s, u"Waiting"_s);
    AdapterStream late(bus);
    ASSERT_TRUE(late.waitForFirstLine());
    EXPECT_EQ(late.title(), u"Two");
}

} // namespace
} // namespace brindle::test
