#include "adapter/linux/PlayerProperties.h"

#include <QDBusArgument>
#include <QDBusObjectPath>
#include <QDBusVariant>

#include <cmath>
#include <gmock/gmock.h>
#include <limits>

namespace brindle::adapter {
namespace {

using namespace Qt::StringLiterals;

PlayerState stateOf(const QVariantMap &properties)
{
    PlayerState state;
    PlayerProperties::merge(state, properties);
    return state;
}

Track trackOf(const QVariantMap &metadata)
{
    return stateOf({{u"Metadata"_s, metadata}}).track;
}

QVariant wrapped(const QVariant &value)
{
    return QVariant::fromValue(QDBusVariant(value));
}

/// A value of each type that is wrong for nearly everything.
QVariantList oddities()
{
    return {QVariant(), true, 7, QByteArray("bytes"), QStringList(), QVariantList{1, u"a"_s},
        QVariantMap{{u"a"_s, 1}}, QVariant::fromValue(QDBusArgument()), std::nan(""), u""_s, u" \n\t"_s};
}

TEST(PlayerProperties, ATrackHasWhatTheMetadataTell)
{
    const Track track = trackOf({{u"mpris:trackid"_s, QVariant::fromValue(QDBusObjectPath(u"/track/1"_s))},
        {u"xesam:title"_s, u"Song"_s}, {u"xesam:artist"_s, QStringList{u"Ann"_s, u"Bob"_s}},
        {u"xesam:album"_s, u"Album"_s}, {u"mpris:length"_s, 200'500'000LL},
        {u"mpris:artUrl"_s, u"file:///c.png"_s}, {u"xesam:url"_s, u"file:///s.ogg"_s}});
    EXPECT_EQ(track.id, u"/track/1");
    EXPECT_EQ(track.title, u"Song");
    EXPECT_EQ(track.artist, u"Ann, Bob");
    EXPECT_EQ(track.album, u"Album");
    EXPECT_EQ(track.duration, 200.5);
    EXPECT_EQ(track.artworkAddress, "file:///c.png");
    EXPECT_EQ(track.url, "file:///s.ogg");
}

TEST(PlayerProperties, WhatHasAWrongTypeIsNotSaid)
{
    for (const QVariant &odd : oddities()) {
        const Track track = trackOf({{u"mpris:trackid"_s, odd}, {u"xesam:title"_s, odd},
            {u"xesam:artist"_s, odd}, {u"xesam:albumArtist"_s, odd}, {u"xesam:album"_s, odd},
            {u"mpris:artUrl"_s, odd}, {u"xesam:url"_s, odd}});
        EXPECT_EQ(track.id + track.title + track.artist + track.album, QString()) << odd.typeName();
        EXPECT_EQ(trackOf({{u"mpris:length"_s, u"200"_s}}).duration, std::nullopt);
        EXPECT_EQ(stateOf({{u"PlaybackStatus"_s, odd}}).status, PlaybackStatus::stopped) << odd.typeName();
        EXPECT_EQ(stateOf({{u"CanPlay"_s, u"no"_s}}).canPlay, true);
    }
}

TEST(PlayerProperties, MetadataOfAWrongTypeAreNone)
{
    for (const QVariant &odd : oddities()) {
        PlayerState state;
        state.track.title = u"Before"_s;
        PlayerProperties::merge(state, {{u"Metadata"_s, odd}});
        EXPECT_EQ(state.track, Track()) << odd.typeName();
    }
}

TEST(PlayerProperties, ABlankTitleIsNone)
{
    EXPECT_EQ(trackOf({{u"xesam:title"_s, u" \t\n"_s}}).title, QString());
    EXPECT_EQ(trackOf({{u"xesam:title"_s, u" kept as it is "_s}}).title, u" kept as it is ");
}

TEST(PlayerProperties, AFileWithoutATitleIsCalledByItsName)
{
    EXPECT_EQ(trackOf({{u"xesam:url"_s, u"file:///music/My%20Song.ogg"_s}}).title, u"My Song.ogg");
    EXPECT_EQ(trackOf({{u"xesam:url"_s, u"https://example.org/live"_s}}).title, QString());
}

TEST(PlayerProperties, AListOfTextsIsOneTextWithoutTheEmptyOnes)
{
    EXPECT_EQ(
        trackOf({{u"xesam:artist"_s, QStringList{u""_s, u"Ann"_s, u" "_s, u"Bob"_s}}}).artist, u"Ann, Bob");
    EXPECT_EQ(trackOf({{u"xesam:artist"_s, u"Ann"_s}}).artist, u"Ann");
}

TEST(PlayerProperties, TheAlbumsArtistStandsInForTheTracks)
{
    EXPECT_EQ(
        trackOf({{u"xesam:artist"_s, QStringList()}, {u"xesam:albumArtist"_s, QStringList{u"Cid"_s}}}).artist,
        u"Cid");
}

TEST(PlayerProperties, EndlessTextIsCutBetweenCharacters)
{
    const QString kept(4095, u'x');
    const QString endless = kept + u"😀"_s.repeated(9000);
    EXPECT_EQ(trackOf({{u"xesam:title"_s, endless}}).title, kept);
}

TEST(PlayerProperties, ALengthIsTakenFromAnyNumber)
{
    for (const QVariant &length : QVariantList{2'000'000, 2'000'000U, 2'000'000LL, 2'000'000ULL, 2e6})
        EXPECT_EQ(trackOf({{u"mpris:length"_s, length}}).duration, 2) << length.typeName();
    EXPECT_EQ(trackOf({{u"mpris:length"_s, wrapped(wrapped(2'000'000LL))}}).duration, 2);
}

TEST(PlayerProperties, AnImpossibleLengthIsNone)
{
    for (const QVariant &length : QVariantList{0LL, -1LL, std::numeric_limits<qint64>::max(),
             std::numeric_limits<qint64>::min(), std::numeric_limits<double>::infinity(), std::nan("")})
        EXPECT_EQ(trackOf({{u"mpris:length"_s, length}}).duration, std::nullopt) << length.toDouble();
}

TEST(PlayerProperties, ATrackIsCalledByAPathOnly)
{
    const auto idOf = [](const QString &id) { return trackOf({{u"mpris:trackid"_s, id}}).id; };
    EXPECT_EQ(idOf(u"/com/example/track/5"_s), u"/com/example/track/5");
    EXPECT_EQ(idOf(u"example:track:5"_s), QString());
    EXPECT_EQ(idOf(u"/"_s), QString());
    EXPECT_EQ(idOf(u"/a//b"_s), QString());
    EXPECT_EQ(idOf(u"/org/mpris/MediaPlayer2/TrackList/NoTrack"_s), QString());
}

TEST(PlayerProperties, AnImpossibleRateIsTheUsualOne)
{
    EXPECT_EQ(stateOf({{u"Rate"_s, 1.5}}).rate, 1.5);
    for (const QVariant &rate : QVariantList{0.0, -1.0, 1e300, std::nan(""), u"2"_s, true, QVariant()})
        EXPECT_EQ(stateOf({{u"Rate"_s, rate}}).rate, 1) << rate.typeName();
}

TEST(PlayerProperties, AnUnknownStatusIsNotPlaying)
{
    EXPECT_EQ(stateOf({{u"PlaybackStatus"_s, u"Playing"_s}}).status, PlaybackStatus::playing);
    EXPECT_EQ(stateOf({{u"PlaybackStatus"_s, u"Paused"_s}}).status, PlaybackStatus::paused);
    EXPECT_EQ(stateOf({{u"PlaybackStatus"_s, u"Rewinding"_s}}).status, PlaybackStatus::stopped);
}

TEST(PlayerProperties, WhatIsNotSpokenOfStays)
{
    PlayerState state = stateOf({{u"PlaybackStatus"_s, u"Playing"_s}, {u"Rate"_s, 2.0}, {u"CanPlay"_s, false},
        {u"CanPause"_s, false}, {u"Metadata"_s, QVariantMap{{u"xesam:title"_s, u"Song"_s}}}});
    const PlayerState before = state;
    PlayerProperties::merge(state, {{u"Volume"_s, 1.0}});
    EXPECT_EQ(state, before);
    EXPECT_FALSE(state.canPlay || state.canPause);
}

TEST(PlayerProperties, APositionIsInSecondsAndNeverBeforeTheStart)
{
    EXPECT_EQ(PlayerProperties::position(QVariant(1'500'000LL)), 1.5);
    EXPECT_EQ(PlayerProperties::position(QVariant(-276'712LL)), 0);
    EXPECT_EQ(PlayerProperties::position(wrapped(7'000'000LL)), 7);
}

TEST(PlayerProperties, AnImpossiblePositionIsNone)
{
    for (const QVariant &value :
        QVariantList{QVariant(), u"5"_s, true, std::nan(""), std::numeric_limits<qint64>::max()})
        EXPECT_EQ(PlayerProperties::position(value), std::nullopt) << value.typeName();
}

} // namespace
} // namespace brindle::adapter
