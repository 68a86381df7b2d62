#include "contract/adapter/AdapterStream.h"
#include "contract/adapter/ScriptedPlayer.h"
#include "support/EventLoop.h"
#include "support/dbus/PrivateBus.h"

#include <QCoreApplication>
#include <QDateTime>

#include <gmock/gmock.h>

namespace brindle::test {
namespace {

using namespace Qt::StringLiterals;
using testing::SizeIs;

QJsonObject payload(const QJsonObject &line)
{
    return line.value(u"payload").toObject();
}

bool isDiff(const QJsonObject &line)
{
    return line.value(u"diff").toBool();
}

class AdapterStreamTest : public testing::Test
{
protected:
    PrivateBus bus;
};

TEST_F(AdapterStreamTest, WithoutPlayersTheFirstLineIsWholeAndEmpty)
{
    AdapterStream stream(bus);
    ASSERT_TRUE(stream.waitForFirstLine());
    EXPECT_EQ(stream.lines.front(), (QJsonObject{{u"diff"_s, false}, {u"payload"_s, QJsonObject()}}));
}

TEST_F(AdapterStreamTest, TheFirstLineTellsAllOfThePlayerThatIsThere)
{
    ScriptedPlayer player(bus, u"music"_s);
    player.play(u"Song"_s);
    player.setPosition(12);
    player.appear();
    AdapterStream stream(bus);
    ASSERT_TRUE(stream.waitForFirstLine());
    const QJsonObject line = stream.lines.front();
    EXPECT_FALSE(isDiff(line));
    QJsonObject told = payload(line);
    const auto timestamp = told.take(u"timestamp").toString();
    EXPECT_EQ(timestamp.size(), u"2026-11-21T08:15:30.250Z"_s.size());
    EXPECT_TRUE(timestamp.endsWith(u'Z'));
    const double age = double(QDateTime::currentMSecsSinceEpoch()) / 1000 - stream.timestamp();
    EXPECT_GE(age, 0);
    EXPECT_LT(age, 60);
    EXPECT_NEAR(told.take(u"elapsedTime").toDouble(), 12, 5);
    EXPECT_EQ(told,
        (QJsonObject{{u"title"_s, u"Song"_s}, {u"artist"_s, u"Ann"_s}, {u"album"_s, u"Album"_s},
            {u"duration"_s, 200}, {u"playing"_s, true}, {u"playbackRate"_s, 1},
            {u"bundleIdentifier"_s, u"music"_s}}));
}

TEST_F(AdapterStreamTest, ChangesOfOnePlayerAreToldAsDifferences)
{
    ScriptedPlayer player(bus, u"music"_s);
    player.appearPlaying(u"Song"_s);
    AdapterStream stream(bus);
    ASSERT_TRUE(stream.waitForTitle(u"Song"_s));
    player.play(u"Other"_s);
    ASSERT_TRUE(stream.waitForTitle(u"Other"_s));
    ASSERT_THAT(stream.lines, SizeIs(2));
    EXPECT_TRUE(isDiff(stream.lines[1]));
    EXPECT_EQ(payload(stream.lines[1]).keys(), (QStringList{u"elapsedTime"_s, u"timestamp"_s, u"title"_s}));
}

TEST_F(AdapterStreamTest, EachChangeOfPlayerIsToldWhole)
{
    AdapterStream stream(bus);
    ASSERT_TRUE(stream.waitForFirstLine());
    ScriptedPlayer first(bus, u"first"_s);
    first.appearPlaying(u"One"_s);
    ASSERT_TRUE(stream.waitForTitle(u"One"_s));
    EXPECT_FALSE(isDiff(stream.lines.back()));
    ScriptedPlayer second(bus, u"second"_s);
    second.appearPlaying(u"Two"_s);
    ASSERT_TRUE(stream.waitForTitle(u"Two"_s));
    EXPECT_FALSE(isDiff(stream.lines.back()));
    second.quit();
    ASSERT_TRUE(stream.waitForTitle(u"One"_s));
    EXPECT_FALSE(isDiff(stream.lines.back()));
    first.quit();
    ASSERT_TRUE(stream.waitForTitle(u""_s));
    EXPECT_FALSE(isDiff(stream.lines.back()));
    EXPECT_EQ(payload(stream.lines.back()), QJsonObject());
}

TEST_F(AdapterStreamTest, APlayerThatStartsAnewUnderItsNameIsAnotherPlayer)
{
    AdapterStream stream(bus);
    {
        ScriptedPlayer player(bus, u"music"_s);
        player.appearPlaying(u"One"_s);
        ASSERT_TRUE(stream.waitForTitle(u"One"_s));
    }
    ScriptedPlayer again(bus, u"music"_s);
    again.appearPlaying(u"Two"_s);
    ASSERT_TRUE(stream.waitForTitle(u"Two"_s));
    EXPECT_FALSE(isDiff(stream.lines.back()));
}

TEST_F(AdapterStreamTest, AHalfFilledFirstChangeIsNotSeen)
{
    ScriptedPlayer player(bus, u"music"_s);
    player.appearPlaying(u"Song"_s);
    AdapterStream stream(bus, {u"--debounce=300"_s});
    ASSERT_TRUE(stream.waitForTitle(u"Song"_s));
    player.setMetadata({{u"xesam:title"_s, u"song-2.mp3"_s}});
    player.play(u"Song 2"_s);
    ASSERT_TRUE(stream.waitForTitle(u"Song 2"_s));
    EXPECT_THAT(stream.lines, SizeIs(2));
}

TEST_F(AdapterStreamTest, WhatAPlayerLeavesOutOfASignalIsAskedFor)
{
    ScriptedPlayer player(bus, u"music"_s);
    player.appearPlaying(u"Song"_s);
    AdapterStream stream(bus);
    ASSERT_TRUE(stream.waitForTitle(u"Song"_s));
    QVariantMap metadata = track(u"Song"_s);
    metadata.insert(u"xesam:artist"_s, QStringList{u"Bob"_s});
    player.properties.insert(u"Metadata"_s, metadata);
    player.tell({{u"Metadata"_s, QVariantMap{{u"xesam:artist"_s, QStringList{u"Bob"_s}}}}});
    ASSERT_TRUE(stream.waitFor([&] { return stream.text(u"artist"_s) == u"Bob"; }));
    EXPECT_EQ(stream.title(), u"Song");
    EXPECT_EQ(stream.number(u"duration"_s), 200);
}

TEST_F(AdapterStreamTest, WhatDoesNotMatterMakesNoLine)
{
    ScriptedPlayer player(bus, u"music"_s);
    player.appearPlaying(u"Song"_s);
    AdapterStream stream(bus);
    ASSERT_TRUE(stream.waitForTitle(u"Song"_s));
    player.change({{u"Volume"_s, 0.5}, {u"CanGoNext"_s, false}});
    player.signal(u"org.example"_s, u"Something"_s, {1});
    // Whatever that had brought would stand before this.
    AdapterStream later(bus);
    ASSERT_TRUE(later.waitForFirstLine());
    player.play(u"Other"_s);
    ASSERT_TRUE(stream.waitForTitle(u"Other"_s));
    EXPECT_THAT(stream.lines, SizeIs(2));
}

TEST_F(AdapterStreamTest, AnApplicationThatNamesNoneIsKnownByItsNameOnTheBus)
{
    ScriptedPlayer player(bus, u"browser.instance4711"_s);
    player.application.clear();
    player.appearPlaying(u"Clip"_s);
    AdapterStream stream(bus);
    ASSERT_TRUE(stream.waitForTitle(u"Clip"_s));
    EXPECT_EQ(stream.text(u"bundleIdentifier"_s), u"browser");
}

TEST_F(AdapterStreamTest, EndsWhenItsReaderGoesAwayThoughNothingIsToBeWritten)
{
    AdapterStream stream(bus);
    ASSERT_TRUE(stream.waitForFirstLine());
    stream.closeReader();
    EXPECT_EQ(stream.exitCode(), 0);
}

TEST_F(AdapterStreamTest, EndsWhenTheBusEnds)
{
    AdapterStream stream(bus);
    ASSERT_TRUE(stream.waitForFirstLine());
    bus.end();
    EXPECT_EQ(stream.exitCode(), 1);
}

TEST_F(AdapterStreamTest, EndsWhereThereIsNoBus)
{
    bus.end();
    AdapterStream stream(bus);
    EXPECT_EQ(stream.exitCode(), 1);
}

TEST_F(AdapterStreamTest, LeavesNothingBehindOnTheBusWhenItIsEnded)
{
    AdapterStream stream(bus);
    ASSERT_TRUE(stream.waitForFirstLine());
    const QString name = u"com.brindle.MediaRemoteAdapter.parent%1"_s.arg(QCoreApplication::applicationPid());
    EXPECT_TRUE(bus.hasOwner(name));
    stream.process().terminate();
    EXPECT_TRUE(bus.waitForNoName(name));
}

TEST_F(AdapterStreamTest, AReaderThatStallsGetsWhatHoldsAndNotAllThatWas)
{
    AdapterStream stream(bus, {u"--debounce=0"_s});
    ScriptedPlayer player(bus, u"music"_s);
    player.appearPlaying(u"Song"_s);
    ASSERT_TRUE(stream.waitForTitle(u"Song"_s));
    const auto before = stream.lines.size();
    stream.stopReading();
    // Each change has a picture larger than the pipe: the first of them fills it.
    constexpr int changes = 10;
    constexpr qsizetype pictureSize = 2'000'000;
    for (int count = 1; count <= changes; ++count) {
        QVariantMap metadata = track(u"Song %1"_s.arg(count));
        const QString address = u"data:,"_s + QString(pictureSize, QChar(u'a' + count));
        metadata.insert(u"mpris:artUrl"_s, address);
        player.setMetadata(metadata);
        // The next one is said when this one has been asked about.
        AdapterStream witness(bus, {u"--debounce=0"_s});
        ASSERT_TRUE(witness.waitForTitle(u"Song %1"_s.arg(count)));
    }
    stream.readOn();
    ASSERT_TRUE(stream.waitForTitle(u"Song %1"_s.arg(changes)));
    EXPECT_LE(stream.lines.size() - before, 5U);
    const QByteArray last(pictureSize, char('a' + changes));
    const auto wanted = decodeArtwork(last.toBase64()).fingerprint;
    EXPECT_TRUE(stream.waitFor([&] { return stream.state().artwork.fingerprint == wanted; }));
}

} // namespace
} // namespace brindle::test
