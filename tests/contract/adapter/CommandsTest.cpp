#include "contract/adapter/AdapterStream.h"
#include "contract/adapter/ScriptedPlayer.h"
#include "support/EventLoop.h"
#include "support/dbus/PrivateBus.h"

#include <QDBusObjectPath>

#include <gmock/gmock.h>

namespace brindle::test {
namespace {

using namespace Qt::StringLiterals;
using testing::ElementsAre;
using testing::IsEmpty;

/// A player, and a stream of this process that shows it.
class AdapterCommands : public testing::Test
{
protected:
    AdapterCommands()
    {
        player.appearPlaying(u"Song"_s);
        stream.waitForTitle(u"Song"_s);
    }

    std::optional<int> send(const QString &number) { return runAdapter(bus, {u"send"_s, number}); }
    std::optional<int> seek(const QString &position) { return runAdapter(bus, {u"seek"_s, position}); }
    void setMetadata(const QString &key, const QVariant &value)
    {
        QVariantMap metadata = track(u"Changed"_s);
        metadata.insert(key, value);
        player.setMetadata(metadata);
        stream.waitForTitle(u"Changed"_s);
    }

    PrivateBus bus;
    ScriptedPlayer player{bus, u"music"_s};
    AdapterStream stream{bus};
};

TEST_F(AdapterCommands, EachNumberIsItsCommand)
{
    for (const auto &number : {u"0"_s, u"1"_s, u"4"_s, u"5"_s})
        EXPECT_EQ(send(number), 0);
    EXPECT_THAT(player.commands, ElementsAre(u"Play"_s, u"Pause"_s, u"Next"_s, u"Previous"_s));
}

TEST_F(AdapterCommands, ReachThePlayerThatTheStreamShows)
{
    ScriptedPlayer other(bus, u"other"_s);
    other.appearPlaying(u"Other"_s);
    ASSERT_TRUE(stream.waitForTitle(u"Other"_s));
    EXPECT_EQ(send(u"4"_s), 0);
    EXPECT_THAT(other.commands, ElementsAre(u"Next"_s));
    player.setStatus(u"Paused"_s);
    player.setStatus(u"Playing"_s);
    ASSERT_TRUE(stream.waitForTitle(u"Song"_s));
    EXPECT_EQ(send(u"5"_s), 0);
    EXPECT_THAT(player.commands, ElementsAre(u"Previous"_s));
}

TEST_F(AdapterCommands, OfTwoStreamsReachThePlayerOfTheirOwnParents)
{
    ScriptedPlayer younger(bus, u"younger"_s);
    younger.appearPlaying(u"Younger"_s);
    ASSERT_TRUE(stream.waitForTitle(u"Younger"_s));
    // To who was there it began last; to who starts now it is the older one.
    player.setStatus(u"Paused"_s);
    player.setStatus(u"Playing"_s);
    ASSERT_TRUE(stream.waitForTitle(u"Song"_s));
    // A parent of its own, which runs a stream and, when that has told what it shows, a command.
    QProcess parent;
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"DBUS_SESSION_BUS_ADDRESS"_s, bus.address());
    parent.setProcessEnvironment(environment);
    endWithUs(parent);
    parent.start(u"/usr/bin/perl"_s,
        QStringList{u"-e"_s,
            u"my $stream = open(my $lines, '-|', '/usr/bin/perl', @ARGV[0, 1], 'stream'); my $first = "
            u"<$lines>;"
            "my $code = system('/usr/bin/perl', @ARGV[0, 1], 'send', '1'); kill 'TERM', $stream; exit $code >> 8;"_s}
            + adapterArguments({}));
    ASSERT_TRUE(eventually([&parent] { return parent.state() == QProcess::NotRunning; }));
    EXPECT_EQ(parent.exitCode(), 0);
    EXPECT_THAT(younger.commands, ElementsAre(u"Pause"_s));
    EXPECT_EQ(send(u"4"_s), 0);
    EXPECT_THAT(player.commands, ElementsAre(u"Next"_s));
}

TEST_F(AdapterCommands, AfterTheFirstOfTwoStreamsHasGoneTheSecondIsAsked)
{
    AdapterStream second(bus);
    ASSERT_TRUE(second.waitForFirstLine());
    stream.closeReader();
    ASSERT_EQ(stream.exitCode(), 0);
    EXPECT_EQ(send(u"4"_s), 0);
    EXPECT_THAT(player.commands, ElementsAre(u"Next"_s));
}

TEST_F(AdapterCommands, WithoutAStreamReachThePlayerThatOneWouldShow)
{
    stream.closeReader();
    ASSERT_EQ(stream.exitCode(), 0);
    ScriptedPlayer idle(bus, u"idle"_s);
    idle.appear();
    EXPECT_EQ(send(u"1"_s), 0);
    EXPECT_EQ(seek(u"5000000"_s), 0);
    EXPECT_THAT(player.commands, ElementsAre(u"Pause"_s, u"SetPosition /track/536f6e67 5000000"_s));
    EXPECT_THAT(idle.commands, IsEmpty());
}

TEST_F(AdapterCommands, WithoutAPlayerFail)
{
    player.quit();
    ASSERT_TRUE(stream.waitForTitle(u""_s));
    EXPECT_EQ(send(u"0"_s), 1);
    EXPECT_EQ(seek(u"0"_s), 1);
    stream.closeReader();
    ASSERT_EQ(stream.exitCode(), 0);
    EXPECT_EQ(send(u"0"_s), 1);
    EXPECT_EQ(seek(u"0"_s), 1);
}

TEST_F(AdapterCommands, ThatMakeNoSenseAreRefused)
{
    for (const QStringList &words :
        {QStringList{u"send"_s, u"2"_s}, {u"send"_s}, {u"seek"_s, u"-1"_s}, {u"jump"_s}, {}})
        EXPECT_EQ(runAdapter(bus, words), 2) << words.join(u' ').toStdString();
    EXPECT_THAT(player.commands, IsEmpty());
}

TEST_F(AdapterCommands, PlayIsAToggleWhereThePlayerCanOnlyPause)
{
    player.change({{u"CanPlay"_s, false}, {u"PlaybackStatus"_s, u"Paused"_s}});
    ASSERT_TRUE(stream.waitFor([this] { return !stream.isPlaying(); }));
    EXPECT_EQ(send(u"0"_s), 0);
    EXPECT_THAT(player.commands, ElementsAre(u"PlayPause"_s));
}

TEST_F(AdapterCommands, PauseIsAToggleWhereThePlayerCanOnlyPlay)
{
    player.change({{u"CanPause"_s, false}, {u"Rate"_s, 2.0}});
    ASSERT_TRUE(stream.waitFor([this] { return stream.number(u"playbackRate"_s) == 2; }));
    EXPECT_EQ(send(u"1"_s), 0);
    EXPECT_THAT(player.commands, ElementsAre(u"PlayPause"_s));
}

TEST_F(AdapterCommands, NeverToggleIntoTheOpposite)
{
    player.change({{u"CanPlay"_s, false}, {u"CanPause"_s, false}, {u"Rate"_s, 2.0}});
    ASSERT_TRUE(stream.waitFor([this] { return stream.number(u"playbackRate"_s) == 2; }));
    EXPECT_EQ(send(u"0"_s), 0);
    player.change({{u"CanPlay"_s, true}, {u"PlaybackStatus"_s, u"Paused"_s}});
    ASSERT_TRUE(stream.waitFor([this] { return !stream.isPlaying(); }));
    EXPECT_EQ(send(u"1"_s), 0);
    EXPECT_THAT(player.commands, ElementsAre(u"Play"_s, u"Pause"_s));
}

TEST_F(AdapterCommands, SeekSetsThePositionOfTheTrack)
{
    EXPECT_EQ(seek(u"12500000"_s), 0);
    EXPECT_THAT(player.commands, ElementsAre(u"SetPosition /track/536f6e67 12500000"_s));
}

TEST_F(AdapterCommands, SeekGoesToTheEndAtMost)
{
    EXPECT_EQ(seek(u"999000000000"_s), 0);
    EXPECT_THAT(player.commands, ElementsAre(u"SetPosition /track/536f6e67 200000000"_s));
}

TEST_F(AdapterCommands, SeekMovesByTheDifferenceWhereATrackHasNoUsableId)
{
    player.setStatus(u"Paused"_s);
    for (const QVariant &id : QVariantList{u"spotted:track:1"_s, 7,
             QVariant::fromValue(QDBusObjectPath(u"/org/mpris/MediaPlayer2/TrackList/NoTrack"_s))}) {
        setMetadata(u"mpris:trackid"_s, id);
        player.setPosition(50);
        EXPECT_EQ(seek(u"30000000"_s), 0);
    }
    const QString back = u"Seek -20000000"_s;
    EXPECT_THAT(player.commands, ElementsAre(back, back, back));
}

TEST_F(AdapterCommands, SeekMovesByTheDifferenceWhereThePositionCannotBeSet)
{
    player.setStatus(u"Paused"_s);
    player.setPosition(50);
    player.refused = {u"SetPosition"_s};
    EXPECT_EQ(seek(u"70000000"_s), 0);
    EXPECT_THAT(player.commands, ElementsAre(u"SetPosition /track/536f6e67 70000000"_s, u"Seek 20000000"_s));
}

TEST_F(AdapterCommands, FailWhereThePlayerRefuses)
{
    player.behave(ScriptedPlayer::Behaviour::refuses);
    EXPECT_EQ(send(u"4"_s), 1);
    EXPECT_EQ(seek(u"0"_s), 1);
}

TEST_F(AdapterCommands, ToAPlayerThatHangsEndAllTheSameAndAreNotLost)
{
    player.behave(ScriptedPlayer::Behaviour::hangs);
    EXPECT_EQ(send(u"4"_s), 1);
    EXPECT_THAT(player.commands, IsEmpty());
    player.behave(ScriptedPlayer::Behaviour::answers);
    EXPECT_THAT(player.commands, ElementsAre(u"Next"_s));
}

TEST_F(AdapterCommands, ToAPlayerThatQuitsInTheMiddleEnd)
{
    player.behave(ScriptedPlayer::Behaviour::hangs);
    QProcess command;
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"DBUS_SESSION_BUS_ADDRESS"_s, bus.address());
    command.setProcessEnvironment(environment);
    command.start(u"/usr/bin/perl"_s, adapterArguments({u"send"_s, u"4"_s}));
    command.waitForStarted();
    player.quit();
    ASSERT_TRUE(eventually([&command] { return command.state() == QProcess::NotRunning; }));
    EXPECT_EQ(command.exitCode(), 1);
}

TEST(AdapterScript, WithoutAHelperSaysSoAndEnds)
{
    PrivateBus bus;
    QProcess process;
    process.start(u"/usr/bin/perl"_s, {QStringLiteral(ADAPTER_SCRIPT), u"/nowhere"_s, u"stream"_s});
    ASSERT_TRUE(process.waitForFinished());
    EXPECT_EQ(process.exitCode(), 127);
    EXPECT_TRUE(process.readAllStandardError().contains("usage"));
}

} // namespace
} // namespace brindle::test
