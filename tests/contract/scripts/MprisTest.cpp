#include "contract/scripts/LinuxScriptWorld.h"

#include <QDBusObjectPath>
#include <QDir>

#include <gmock/gmock.h>

namespace brindle::test {

namespace {

using namespace Qt::StringLiterals;
using PlayerScripts::spotify;
using testing::ElementsAre;
using enum ScriptOutcome::Status;

const QString spotifyService = u"org.mpris.MediaPlayer2.spotify"_s;
const QString chromiumService = u"org.mpris.MediaPlayer2.chromium.instance7"_s;
const QString otherService = u"org.mpris.MediaPlayer2.chromium.instance8"_s;
const QString chromiumProgram = u"/usr/lib/chromium/chromium"_s;

QVariantMap film(const QString &status, const QString &title, const QString &url)
{
    return {{u"PlaybackStatus"_s, status}, {u"Position"_s, qint64(7'250'000)},
        {u"Metadata"_s,
            QVariantMap{
                {u"xesam:title"_s, title}, {u"xesam:url"_s, url}, {u"mpris:length"_s, qint64(60'500'000)}}}};
}

QString state(const QString &sign, const QString &title)
{
    return QStringList{sign, title, u"https://films.example/"_s, u"60.5"_s, u"7.25"_s}.join(QChar(31));
}

/// A player of Chromium's own.
std::unique_ptr<DbusMock> startBrowser(
    LinuxScriptWorld &world, const QVariantMap &properties, const QString &service = chromiumService)
{
    auto player = world.startPlayer(service, properties);
    world.pretendToRun(service, chromiumProgram);
    return player;
}

class MprisTest : public testing::Test
{
protected:
    ScriptOutcome askSpotify() { return world.run(PlayerScripts::nowPlaying(spotify)); }
    LinuxScriptWorld world;
};

} // namespace

TEST_F(MprisTest, SeveralArtistsAreNamedTogether)
{
    world.spotifyPlays({});
    auto properties = LinuxScriptWorld::propertiesOf({});
    auto metadata = properties[u"Metadata"_s].toMap();
    metadata[u"xesam:artist"_s] = QStringList{u"One"_s, u"Two"_s};
    properties[u"Metadata"_s] = metadata;
    LinuxScriptWorld::say(*world.spotify, properties);
    EXPECT_EQ(askSpotify().result->items[1].stringValue, u"One, Two"_s);
}

TEST_F(MprisTest, WithoutAnAddressTheArtworkIsMissing)
{
    world.spotifyPlays({.artwork = u""_s});
    EXPECT_EQ(askSpotify().result->items.value(6), ScriptDescriptor::missing());
}

TEST_F(MprisTest, WhatAPlayerSaysInWrongTypesIsEmpty)
{
    world.spotify = world.startPlayer(spotifyService,
        {{u"PlaybackStatus"_s, u"Paused"_s}, {u"Position"_s, u"here"_s},
            {u"Metadata"_s,
                QVariantMap{{u"xesam:title"_s, 5}, {u"xesam:artist"_s, QVariantMap{{u"a"_s, 1}}},
                    {u"xesam:album"_s, QStringList{u"a"_s}}, {u"mpris:length"_s, u"long"_s},
                    {u"mpris:artUrl"_s, 7}, {u"mpris:trackid"_s, true}}}});
    const auto items = askSpotify().result.value_or(ScriptDescriptor()).items;
    ASSERT_EQ(items.size(), 7);
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(items[i].stringValue, QString()) << i;
    EXPECT_EQ(items[3].doubleValue, 0);
    EXPECT_EQ(items[4].doubleValue, 0);
    EXPECT_EQ(items[6], ScriptDescriptor::missing());
}

TEST_F(MprisTest, APlayerWhoseStateIsNoTextCountsAsStopped)
{
    world.spotify = world.startPlayer(spotifyService, {{u"PlaybackStatus"_s, 3}, {u"Metadata"_s, u"none"_s}});
    EXPECT_EQ(askSpotify().result, ScriptDescriptor::missing());
}

TEST_F(MprisTest, LengthsInAnyTypeOfNumberAreRead)
{
    world.spotifyPlays({});
    for (const QVariant &length : {QVariant(qint64(3'000'000)), QVariant(quint64(3'000'000)),
             QVariant(3'000'000), QVariant(3'000'000u), QVariant(3e6)}) {
        auto properties = LinuxScriptWorld::propertiesOf({});
        properties[u"Metadata"_s] = QVariantMap{{u"mpris:length"_s, length}};
        LinuxScriptWorld::say(*world.spotify, properties);
        EXPECT_EQ(askSpotify().result->items[3].doubleValue, 3000) << length.typeName();
    }
}

TEST_F(MprisTest, ATitleOfExtravagantLengthIsNone)
{
    world.spotifyPlays({.title = QString(0x10001, u'a')});
    EXPECT_EQ(askSpotify().result->items[0].stringValue, QString());
}

TEST_F(MprisTest, APositionIsSetInTheTrackThatIsOn)
{
    world.spotifyPlays({});
    EXPECT_EQ(world.run(PlayerScripts::seek(30.5, spotify)).status, executed);
    EXPECT_THAT(world.commands(), ElementsAre(u"SetPosition 30.5"_s));
    auto properties = LinuxScriptWorld::propertiesOf({});
    properties[u"Metadata"_s] = QVariantMap{{u"mpris:trackid"_s, u"spotify:track:abc"_s}};
    LinuxScriptWorld::say(*world.spotify, properties);
    EXPECT_EQ(world.run(PlayerScripts::seek(60, spotify)).status, failed) << "a track without a usable name";
}

TEST_F(MprisTest, APlayerThatHangsFailsInTime)
{
    LinuxScriptWorld impatient({.withAll = 0.2, .withOne = 0.1});
    impatient.spotifyPlays({});
    impatient.spotify->freeze();
    for (const QString &source : {PlayerScripts::nowPlaying(spotify), PlayerScripts::togglePlayback(spotify),
             PlayerScripts::seek(3, spotify)})
        EXPECT_EQ(impatient.run(source).status, failed);
    impatient.spotify->thaw();
}

TEST_F(MprisTest, WithoutABusEverythingFails)
{
    world.bus.end();
    EXPECT_EQ(askSpotify().status, failed);
    EXPECT_EQ(world.run(BrowserScripts::nowPlaying(chromium)).status, failed);
}

TEST_F(MprisTest, ABrowserWithoutADebuggingPortIsAskedOnTheBus)
{
    const auto player = startBrowser(world, film(u"Playing"_s, u"A film"_s, u"https://films.example/"_s));
    EXPECT_EQ(world.runBrowser(), state(u"1"_s, u"A film"_s));
    LinuxScriptWorld::say(*player, {{u"PlaybackStatus"_s, u"Paused"_s}});
    EXPECT_EQ(world.runBrowser(), state(u"0"_s, u"A film"_s));
    LinuxScriptWorld::say(*player, {{u"PlaybackStatus"_s, u"Stopped"_s}});
    EXPECT_EQ(world.runBrowser(), QString());
}

TEST_F(MprisTest, ABrowserThatNamesNoPageOfTheWebSaysNothing)
{
    const auto player = startBrowser(world, film(u"Playing"_s, u"A film"_s, u""_s));
    for (const auto &url : {u""_s, u"file:///a.webm"_s, u"chrome://media"_s, u"films.example"_s}) {
        LinuxScriptWorld::say(*player, film(u"Playing"_s, u"A film"_s, url));
        EXPECT_EQ(world.runBrowser(), QString()) << url.toStdString();
    }
}

TEST_F(MprisTest, ATitleCannotPassForAnythingElse)
{
    const auto player = startBrowser(world,
        film(u"Playing"_s, u"A film\u001fhttps://else.example/\u001f1"_s, u"https://films.example/"_s));
    EXPECT_EQ(world.runBrowser(), state(u"1"_s, u"A filmhttps://else.example/1"_s));
}

TEST_F(MprisTest, OfTwoPlayersOfTheBrowserTheOneThatPlaysIsTold)
{
    const auto player = startBrowser(world, film(u"Paused"_s, u"First"_s, u"https://films.example/"_s));
    const auto other =
        startBrowser(world, film(u"Playing"_s, u"Second"_s, u"https://films.example/"_s), otherService);
    EXPECT_EQ(world.runBrowser(), state(u"1"_s, u"Second"_s));
}

TEST(PatienceWithPlayers, APlayerThatHangsDoesNotKeepTheOthersFromBeingAsked)
{
    LinuxScriptWorld world({.withAll = 10, .withOne = 1});
    const auto player = startBrowser(world, film(u"Playing"_s, u"First"_s, u"https://films.example/"_s));
    const auto other =
        startBrowser(world, film(u"Playing"_s, u"Second"_s, u"https://films.example/"_s), otherService);
    player->freeze();
    EXPECT_EQ(world.runBrowser(), state(u"1"_s, u"Second"_s));
    player->thaw();
}

TEST_F(MprisTest, OnlyPlayersOfThatBrowserAreItsOwn)
{
    const auto player = startBrowser(world, film(u"Playing"_s, u"A film"_s, u"https://films.example/"_s));
    world.pretendToRun(chromiumService, u"/opt/google/chrome/chrome"_s);
    EXPECT_EQ(world.runBrowser(), QString());
    const BrowserDescriptor chrome{u"com.google.Chrome"_s, u"Google Chrome"_s, BrowserFamily::chromium};
    EXPECT_EQ(
        LinuxScriptWorld::textOf(world.run(BrowserScripts::nowPlaying(chrome))), state(u"1"_s, u"A film"_s));
}

TEST_F(MprisTest, ABrowserInASandboxIsKnownByIt)
{
    const auto player = startBrowser(world, film(u"Playing"_s, u"A film"_s, u"https://films.example/"_s));
    world.pretendToRun(chromiumService, u"/usr/bin/xdg-dbus-proxy"_s);
    const QString process = QDir(world.path(u"proc"_s)).entryList(QDir::Dirs | QDir::NoDotAndDotDot).value(0);
    const QString root = world.path(u"proc/"_s + process + u"/root"_s);
    QDir().mkpath(root);
    QFile info(root + u"/.flatpak-info"_s);
    ASSERT_TRUE(info.open(QIODevice::WriteOnly));
    info.write("[Instance]\nname=wrong\n[Application]\nname=org.chromium.Chromium\nruntime=x\n");
    info.close();
    EXPECT_EQ(world.runBrowser(), state(u"1"_s, u"A film"_s));
}

TEST_F(MprisTest, APlayerThatSpeaksForAnotherProcessIsThatProcesss)
{
    const QString service = u"org.mpris.MediaPlayer2.plasma-browser-integration"_s;
    auto properties = film(u"Playing"_s, u"A film"_s, u"https://films.example/"_s);
    auto metadata = properties[u"Metadata"_s].toMap();
    metadata[u"kde:pid"_s] = 4242;
    properties[u"Metadata"_s] = metadata;
    const auto player = world.startPlayer(service, properties);
    world.pretendToRun(service, u"/usr/bin/plasma-browser-integration-host"_s);
    EXPECT_EQ(world.runBrowser(), QString());
    QDir().mkpath(world.path(u"proc/4242"_s));
    QFile::link(chromiumProgram, world.path(u"proc/4242/exe"_s));
    EXPECT_EQ(world.runBrowser(), state(u"1"_s, u"A film"_s));
}

} // namespace brindle::test
