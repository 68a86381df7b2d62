#include "unit/media/MediaFixture.h"

namespace brindle {
namespace {

using testing::ElementsAre;
using testing::Key;

// Which session is shown

TEST_F(SystemMedia, WithNoSessionsNothingIsShown)
{
    EXPECT_EQ(service.nowPlaying(), std::nullopt);
    startWithRemote();
    remote->report(std::nullopt);
    EXPECT_EQ(service.nowPlaying(), std::nullopt);
    EXPECT_EQ(announcements.count(), 0);

    remote->report(playing(music));
    EXPECT_EQ(shown(), playing(music));
    remote->report(std::nullopt);
    EXPECT_EQ(service.nowPlaying(), std::nullopt);
    EXPECT_EQ(announcements.count(), 2);
}

TEST_F(SystemMedia, ARepeatLeavesObserversSilent)
{
    startWithRemote();
    remote->report(playing(music));
    announcements.clear();
    time.advance(1);
    auto repeat = playing(music);
    repeat.sourceIcon = picture(Qt::red);
    remote->report(repeat);
    EXPECT_EQ(announcements.count(), 0);
    repeat.elapsed = 11;
    remote->report(repeat);
    EXPECT_EQ(announcements.count(), 1);
}

TEST_F(SystemMedia, ABrowserTabThatPlaysGoesBeforeAPausedPlayerWhicheverReportedLater)
{
    startWithRemote();
    remote->report(paused(music));
    remote->canRun = false;
    has(playing(browser));
    service.stop();
    service.start();
    time.runPosted();
    EXPECT_EQ(shownSource(), browser);

    has(paused(music));
    quits(browser);
    poll();
    EXPECT_EQ(shownSource(), browser) << "the player reported later";
}

TEST_F(SystemMedia, OfTwoThatPlayTheOneThatReportedLatestIsShown)
{
    startWithoutRemote();
    has(playing(spotify));
    poll();
    EXPECT_EQ(shownSource(), spotify);

    quits(spotify);
    has(playing(browser));
    poll();
    ASSERT_TRUE(service.sessions().at(spotify).track.isPlaying);
    EXPECT_EQ(shownSource(), browser);

    quits(browser);
    has(playing(spotify));
    poll();
    ASSERT_TRUE(service.sessions().at(browser).track.isPlaying);
    EXPECT_EQ(shownSource(), spotify);
}

TEST_F(SystemMedia, OfTwoThatArePausedTheOneThatPlayedLastIsShown)
{
    startWithoutRemote();
    has(playing(music));
    poll();
    has(paused(music));
    time.advance(300);
    has(playing(spotify));
    poll();
    has(paused(spotify));
    time.advance(300);
    EXPECT_EQ(shownSource(), spotify);
    EXPECT_THAT(service.sessions(), ElementsAre(Key(music), Key(spotify)));
}

TEST_F(SystemMedia, ATieIsDecidedAlikeEachTime)
{
    startWithoutRemote();
    has(playing(spotify));
    has(playing(browser));
    has(playing(music));
    for (int count = 0; count < 20; ++count) {
        poll();
        EXPECT_EQ(shownSource(), music);
    }
    EXPECT_EQ(announcements.count(), 1);
}

TEST_F(SystemMedia, ASessionOfTheRemoteHasNoPriority)
{
    startWithoutRemote();
    has(playing(spotify));
    poll();
    quits(spotify);
    remote->canRun = true;
    service.stop();
    startWithRemote();
    remote->report(paused(music));
    EXPECT_EQ(shownSource(), spotify);
}

// Merging reports

TEST_F(SystemMedia, ASourceHasOneSessionWhicheverSongItPlays)
{
    startWithRemote();
    remote->report(playing(music, QStringLiteral("One")));
    remote->report(playing(music, QStringLiteral("Two")));
    EXPECT_EQ(service.sessions().size(), 1U);
    EXPECT_EQ(shown().title, QStringLiteral("Two"));
}

TEST_F(SystemMedia, ASourceWithoutIconAndNameGetsThoseOfItsApplication)
{
    workspace.install(music, QStringLiteral("Music"));
    startWithRemote();
    auto track = playing(music);
    track.sourceName.reset();
    remote->report(track);
    EXPECT_EQ(shown().sourceName, QStringLiteral("Music"));
    EXPECT_EQ(shown().sourceIcon, workspace.icon(QStringLiteral("/applications/") + music));
}

TEST_F(SystemMedia, ANameThatTheSourceGaveStays)
{
    workspace.install(music, QStringLiteral("Music"));
    startWithRemote();
    remote->report(playing(music));
    EXPECT_EQ(shown().sourceName, playing(music).sourceName);
    EXPECT_TRUE(shown().sourceIcon);
}

TEST_F(SystemMedia, WithAnIconAtHandTheApplicationIsNotAskedForItsName)
{
    workspace.install(music, QStringLiteral("Music"));
    startWithRemote();
    auto track = playing(music);
    track.sourceName.reset();
    track.sourceIcon = picture(Qt::red);
    remote->report(track);
    EXPECT_EQ(shown().sourceName, std::nullopt);
    EXPECT_EQ(shown().sourceIcon, picture(Qt::red));
}

TEST_F(SystemMedia, AnApplicationWithoutANameLeavesItAbsent)
{
    workspace.install(music, QString());
    workspace.installed[music].name.reset();
    startWithRemote();
    auto track = playing(music);
    track.sourceName.reset();
    remote->report(track);
    EXPECT_EQ(shown().sourceName, std::nullopt);
    EXPECT_TRUE(shown().sourceIcon);
}

TEST_F(SystemMedia, AnApplicationThatIsNotInstalledSuppliesNothing)
{
    startWithRemote();
    remote->report(playing(music));
    EXPECT_EQ(shown().sourceIcon, std::nullopt);
    workspace.install(music, QStringLiteral("Music"));
    remote->report(playing(music));
    EXPECT_TRUE(service.sessions().at(music).track.sourceIcon) << "it was installed meanwhile";
}

TEST_F(SystemMedia, AnApplicationIsAskedOnceForAsLongAsItIsKnown)
{
    workspace.install(music, QStringLiteral("Music"));
    startWithRemote();
    remote->report(playing(music));
    const QImage icon = *shown().sourceIcon;
    workspace.installed[music].icon = picture(Qt::red);
    remote->report(playing(music, QStringLiteral("Other")));
    EXPECT_EQ(shown().sourceIcon, icon);
    remote->report(std::nullopt);
    remote->report(playing(music));
    EXPECT_EQ(shown().sourceIcon, picture(Qt::red));
}

TEST_F(SystemMedia, ASourceWithoutIdentifierIsShownWithoutIcon)
{
    startWithRemote();
    auto track = playing(music);
    track.sourceBundleIdentifier.reset();
    track.sourceName.reset();
    remote->report(track);
    EXPECT_EQ(shown().sourceIcon, std::nullopt);
    EXPECT_TRUE(knows(QStringLiteral("Song|Band")));
}

TEST_F(SystemMedia, ArtworkSurvivesReportsWithoutItAndAChangeOfSong)
{
    startWithRemote();
    auto track = playing(music);
    track.artwork = picture(Qt::red);
    track.artworkURL = QUrl(QStringLiteral("https://example.org/red.png"));
    remote->report(track);
    remote->report(playing(music, QStringLiteral("Other")));
    EXPECT_EQ(shown().title, QStringLiteral("Other"));
    EXPECT_EQ(shown().artwork, picture(Qt::red));
    EXPECT_EQ(shown().artworkURL, track.artworkURL);

    track.artwork = picture(Qt::blue);
    track.artworkURL = QUrl(QStringLiteral("https://example.org/blue.png"));
    remote->report(track);
    EXPECT_EQ(shown().artwork, picture(Qt::blue));
    EXPECT_EQ(shown().artworkURL, track.artworkURL);
}

TEST_F(SystemMedia, ArtworkOfOneSourceIsNotLentToAnother)
{
    startWithoutRemote();
    auto track = paused(music);
    track.artwork = picture(Qt::red);
    has(track);
    has(playing(spotify));
    poll();
    EXPECT_EQ(shownSource(), spotify);
    EXPECT_EQ(shown().artwork, std::nullopt);
}

TEST_F(SystemMedia, TheFingerprintIsThatOfTheReport)
{
    startWithRemote();
    auto track = playing(music);
    track.artwork = picture(Qt::red);
    track.artworkFingerprint = 7;
    remote->report(track);
    remote->report(playing(music));
    EXPECT_EQ(shown().artworkFingerprint, std::nullopt);
}

TEST_F(SystemMedia, WhatPlaysIsKnownToHavePlayedNowAndWhatIsPausedKeepsItsTime)
{
    startWithRemote();
    remote->report(paused(music));
    const Date first = time.now();
    EXPECT_EQ(service.sessions().at(music).lastPlayedAt, first) << "it was never heard of before";
    time.advance(10);
    remote->report(paused(music));
    EXPECT_EQ(service.sessions().at(music).lastPlayedAt, first);
    EXPECT_EQ(service.sessions().at(music).observedAt, time.now());
    time.advance(10);
    remote->report(playing(music));
    EXPECT_EQ(service.sessions().at(music).lastPlayedAt, time.now());
}

// The remote

TEST_F(SystemMedia, ARemoteReportForANewApplicationRemovesTheSessionOfTheOldOne)
{
    startWithRemote();
    remote->report(playing(music));
    remote->report(paused(browser));
    EXPECT_EQ(shownSource(), browser);
    EXPECT_THAT(service.sessions(), ElementsAre(Key(browser)));
    EXPECT_EQ(service.remoteSessionKey(), browser);
}

TEST_F(SystemMedia, ARemoteThatReportsNothingDropsItsSessionOnly)
{
    startWithoutRemote();
    has(paused(spotify));
    poll();
    remote->canRun = true;
    service.stop();
    startWithRemote();
    remote->report(playing(music));
    EXPECT_EQ(shownSource(), music);
    remote->report(std::nullopt);
    EXPECT_EQ(shownSource(), spotify);
    EXPECT_EQ(service.remoteSessionKey(), std::nullopt);
}

TEST_F(SystemMedia, WhenTheRemoteEndsItsSessionVanishesAndTheApplicationsAreAsked)
{
    startWithRemote();
    EXPECT_TRUE(service.supportsTransportControls());
    remote->report(playing(music));
    has(playing(browser));
    time.advance(60.4);
    EXPECT_EQ(applications->polls, 0);

    remote->end();
    EXPECT_EQ(service.nowPlaying(), std::nullopt);
    EXPECT_FALSE(service.supportsTransportControls());
    time.runPosted();
    EXPECT_EQ(shownSource(), browser);
    EXPECT_THAT(service.sessions(), ElementsAre(Key(browser)));

    EXPECT_EQ(applications->polls, 1);
    time.advance(1.0);
    EXPECT_EQ(applications->polls, 1);
    time.advance(0.2);
    EXPECT_EQ(applications->polls, 2) << "60 s and 1.5 s are moments of the poll";
    time.advance(1.5);
    EXPECT_EQ(applications->polls, 3);
}

TEST_F(SystemMedia, ARemoteThatIsSaidToHaveEndedAndRunsAfterAllIsTrusted)
{
    startWithRemote();
    has(playing(browser));
    remote->tellOfItsEnd();
    time.advance(10);
    EXPECT_EQ(applications->polls, 0);
}

TEST_F(SystemMedia, ADeadRemoteIsNotStartedAgainBeforeTheNextStart)
{
    startWithRemote();
    remote->end();
    time.advance(3600);
    EXPECT_FALSE(remote->isRunning());
    service.start();
    EXPECT_FALSE(remote->isRunning()) << "it was started already";
    service.stop();
    service.start();
    EXPECT_TRUE(remote->isRunning());
    EXPECT_TRUE(service.supportsTransportControls());
}

TEST_F(SystemMedia, ReportsAfterTheServiceIsGoneFindNobody)
{
    auto *lastRemote = new ScriptedRemote(time);
    lastRemote->canRun = false;
    auto gone = std::make_unique<SystemMediaService>(std::unique_ptr<MediaRemote>(lastRemote),
        std::make_unique<ScriptedApplications>(), std::make_unique<FakeSerialQueue>(time), audio, workspace,
        time);
    gone->start();
    gone.reset();
    time.advance(10);
    EXPECT_FALSE(audio.isObserved());
    EXPECT_EQ(time.pendingCount(), 0);
}

} // namespace
} // namespace brindle
