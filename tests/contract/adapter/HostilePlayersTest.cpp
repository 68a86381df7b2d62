#include "contract/adapter/AdapterStream.h"
#include "contract/adapter/ScriptedPlayer.h"
#include "support/dbus/PrivateBus.h"

#include <QDBusVariant>

#include <cmath>
#include <gmock/gmock.h>
#include <limits>

namespace brindle::test {
namespace {

using namespace Qt::StringLiterals;
using Behaviour = ScriptedPlayer::Behaviour;

const QString propertiesInterface = u"org.freedesktop.DBus.Properties"_s;
const QString playerInterface = u"org.mpris.MediaPlayer2.Player"_s;

/// A stream, a player that behaves, and one that does not.
class AdapterHostilePlayers : public testing::Test
{
protected:
    AdapterHostilePlayers() { stream.waitForFirstLine(); }

    /// Whether the stream is still worth its name.
    bool followsOthers()
    {
        ScriptedPlayer good(bus, u"good"_s);
        good.appearPlaying(u"Good"_s);
        return stream.waitForTitle(u"Good"_s);
    }

    PrivateBus bus;
    AdapterStream stream{bus};
    ScriptedPlayer bad{bus, u"bad"_s};
};

TEST_F(AdapterHostilePlayers, WrongTypesCountAsNotSaid)
{
    const QVariantList oddities{7, true, -0.5, std::nan(""), u""_s, QStringList{u"a"_s}, QByteArray("a"),
        QVariantMap{{u"a"_s, 1}},
        QVariant::fromValue(QDBusVariant(QVariant::fromValue(QDBusVariant(u"a"_s)))),
        QVariantList{1, u"a"_s}};
    bad.appearPlaying(u"Good"_s);
    ASSERT_TRUE(stream.waitForTitle(u"Good"_s));
    for (const QVariant &odd : oddities) {
        bad.change({{u"PlaybackStatus"_s, odd}, {u"Rate"_s, odd}, {u"Metadata"_s, odd}, {u"CanPlay"_s, odd},
            {u"CanPause"_s, odd}, {u"Position"_s, odd}});
        ASSERT_TRUE(stream.waitForTitle(u""_s)) << odd.typeName();
        EXPECT_FALSE(stream.isPlaying());
        bad.properties.remove(u"Position"_s);
        bad.change({{u"Rate"_s, 1.0}});
        bad.play(u"Good"_s);
        ASSERT_TRUE(stream.waitForTitle(u"Good"_s)) << odd.typeName();
    }
}

TEST_F(AdapterHostilePlayers, WrongTypesInMetadataCountAsNotSaid)
{
    int count = 0;
    for (const QVariant &odd :
        QVariantList{7, true, std::nan(""), QVariantMap{{u"a"_s, 1}}, QByteArray("a"), u" "_s}) {
        const QString title = u"Title %1"_s.arg(++count);
        bad.play(title);
        bad.setMetadata({{u"xesam:title"_s, title}, {u"xesam:artist"_s, odd}, {u"xesam:album"_s, odd},
            {u"mpris:artUrl"_s, odd}, {u"mpris:trackid"_s, odd}, {u"xesam:url"_s, odd}});
        if (count == 1)
            bad.appear();
        ASSERT_TRUE(stream.waitForTitle(title)) << odd.typeName();
        EXPECT_FALSE(stream.state().fields.contains(u"artist"_s)) << odd.typeName();
        EXPECT_FALSE(stream.state().fields.contains(u"album"_s)) << odd.typeName();
        EXPECT_EQ(stream.state().artwork.fingerprint, std::nullopt);
    }
}

TEST_F(AdapterHostilePlayers, ImpossibleLengthsAreNone)
{
    int count = 0;
    for (const QVariant &length : QVariantList{-1LL, 0LL, std::numeric_limits<qint64>::max(),
             std::numeric_limits<qint64>::min(), std::nan(""), u"3:20"_s}) {
        const QString title = u"Title %1"_s.arg(++count);
        bad.play(title);
        bad.setMetadata({{u"xesam:title"_s, title}, {u"mpris:length"_s, length}});
        if (count == 1)
            bad.appear();
        ASSERT_TRUE(stream.waitForTitle(title));
        EXPECT_FALSE(stream.state().fields.contains(u"duration"_s)) << length.toString().toStdString();
    }
}

TEST_F(AdapterHostilePlayers, ATitleOfBlanksIsNone)
{
    bad.appearPlaying(u"Good"_s);
    ASSERT_TRUE(stream.waitForTitle(u"Good"_s));
    bad.setMetadata({{u"xesam:title"_s, u" \n\t "_s}});
    EXPECT_TRUE(stream.waitFor([this] { return !stream.state().fields.contains(u"title"_s); }));
    EXPECT_TRUE(stream.isPlaying());
}

TEST_F(AdapterHostilePlayers, NoMetadataIsNoTrack)
{
    bad.properties = {{u"PlaybackStatus"_s, u"Playing"_s}};
    bad.appear();
    ASSERT_TRUE(stream.waitFor([this] { return stream.isPlaying(); }));
    EXPECT_FALSE(stream.state().fields.contains(u"title"_s));
    EXPECT_TRUE(followsOthers());
}

TEST_F(AdapterHostilePlayers, AnyTextMakesOneLine)
{
    const QString title = u"\"quotes\" \\ line\nfeed\r \u2028 😀 \u0001 "_s + QChar(0xFFFF);
    bad.appearPlaying(title);
    EXPECT_TRUE(stream.waitForTitle(title));
}

TEST_F(AdapterHostilePlayers, OneThatHangsFromTheStartHoldsUpNobody)
{
    bad.play(u"Late"_s);
    bad.behave(Behaviour::hangs);
    bad.appear();
    EXPECT_TRUE(followsOthers());
    ASSERT_TRUE(stream.waitForTitle(u""_s));
    // It wakes after all, and what it says counts.
    bad.behave(Behaviour::answers);
    EXPECT_TRUE(stream.waitForTitle(u"Late"_s));
}

TEST_F(AdapterHostilePlayers, OneThatHangsDoesNotHoldUpTheFirstLine)
{
    bad.behave(Behaviour::hangs);
    bad.appear();
    ScriptedPlayer good(bus, u"good"_s);
    good.appearPlaying(u"Good"_s);
    AdapterStream late(bus);
    ASSERT_TRUE(late.waitForFirstLine());
    EXPECT_EQ(late.title(), u"Good");
}

TEST_F(AdapterHostilePlayers, OneThatHangsLaterIsShownAsItWas)
{
    bad.appearPlaying(u"Song"_s);
    ASSERT_TRUE(stream.waitForTitle(u"Song"_s));
    bad.behave(Behaviour::hangs);
    bad.setStatus(u"Paused"_s);
    ASSERT_TRUE(stream.waitFor([this] { return !stream.isPlaying(); }));
    EXPECT_EQ(stream.title(), u"Song");
    EXPECT_TRUE(followsOthers());
}

TEST_F(AdapterHostilePlayers, OneThatQuitsWhileItHangsIsGone)
{
    bad.appearPlaying(u"Song"_s);
    ASSERT_TRUE(stream.waitForTitle(u"Song"_s));
    bad.behave(Behaviour::hangs);
    bad.setStatus(u"Paused"_s);
    bad.quit();
    EXPECT_TRUE(stream.waitFor([this] { return stream.state().fields.isEmpty(); }));
    EXPECT_TRUE(followsOthers());
}

TEST_F(AdapterHostilePlayers, OneThatRefusesToAnswerIsKnownByItsSignals)
{
    bad.behave(Behaviour::refuses);
    bad.appear();
    ASSERT_TRUE(followsOthers());
    bad.play(u"Song"_s);
    EXPECT_TRUE(stream.waitForTitle(u"Song"_s));
}

TEST_F(AdapterHostilePlayers, OneThatAnswersSomethingElseIsKnownByItsSignals)
{
    bad.behave(Behaviour::babbles);
    bad.appear();
    ASSERT_TRUE(followsOthers());
    bad.play(u"Song"_s);
    EXPECT_TRUE(stream.waitForTitle(u"Song"_s));
    EXPECT_EQ(stream.text(u"bundleIdentifier"_s), u"bad");
}

TEST_F(AdapterHostilePlayers, SignalsOfAWrongShapeAreIgnored)
{
    bad.appearPlaying(u"Song"_s);
    ASSERT_TRUE(stream.waitForTitle(u"Song"_s));
    bad.signal(propertiesInterface, u"PropertiesChanged"_s, {playerInterface});
    bad.signal(propertiesInterface, u"PropertiesChanged"_s, {playerInterface, 7, 8});
    bad.signal(propertiesInterface, u"PropertiesChanged"_s, {});
    bad.signal(playerInterface, u"Seeked"_s, {u"far"_s});
    bad.signal(playerInterface, u"Seeked"_s, {});
    bad.signal(playerInterface, u"Seeked"_s, {std::numeric_limits<qlonglong>::max()});
    bad.play(u"Other"_s);
    EXPECT_TRUE(stream.waitForTitle(u"Other"_s));
    EXPECT_LT(stream.number(u"elapsedTime"_s), 60);
}

TEST_F(AdapterHostilePlayers, AStrangerCannotSpeakForAPlayer)
{
    bad.appearPlaying(u"Song"_s);
    ASSERT_TRUE(stream.waitForTitle(u"Song"_s));
    ScriptedPlayer stranger(bus, u"stranger"_s);
    stranger.play(u"Forged"_s);
    bad.play(u"Other"_s);
    ASSERT_TRUE(stream.waitForTitle(u"Other"_s));
    EXPECT_EQ(stream.lines.size(), 3U);
}

TEST_F(AdapterHostilePlayers, AFloodOfSignalsIsAFewLines)
{
    bad.appearPlaying(u"Song"_s);
    ASSERT_TRUE(stream.waitForTitle(u"Song"_s));
    const auto before = stream.lines.size();
    constexpr int signals = 2000;
    for (int count = 1; count <= signals; ++count)
        bad.play(u"Song %1"_s.arg(count));
    ASSERT_TRUE(stream.waitForTitle(u"Song %1"_s.arg(signals)));
    EXPECT_LT(stream.lines.size() - before, 100U);
    EXPECT_TRUE(followsOthers());
}

TEST_F(AdapterHostilePlayers, ManyThatComeAndGoLeaveTheLastOne)
{
    for (int count = 0; count < 50; ++count) {
        ScriptedPlayer passing(bus, u"passing%1"_s.arg(count));
        passing.appearPlaying(u"Passing"_s);
    }
    EXPECT_TRUE(followsOthers());
}

TEST_F(AdapterHostilePlayers, AnEndlessTitleIsCut)
{
    bad.appearPlaying(QString(5'000'000, u'x'));
    ASSERT_TRUE(stream.waitFor([this] { return !stream.title().isEmpty(); }));
    EXPECT_EQ(stream.title().size(), 4096);
}

} // namespace
} // namespace brindle::test
