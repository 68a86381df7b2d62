#include "unit/media/MediaFixture.h"

#include <limits>

namespace brindle {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class MediaCommands : public SystemMedia
{
protected:
    const QString pause = QStringLiteral("send 1");
    const QString play = QStringLiteral("send 0");
};

TEST_F(MediaCommands, WithNothingToMoveNothingHappens)
{
    startWithRemote();
    service.togglePlayback();
    service.seek(5);
    service.previousTrack();
    EXPECT_EQ(service.nowPlaying(), std::nullopt);
    EXPECT_THAT(remote->commands, IsEmpty());
    EXPECT_EQ(announcements.count(), 0);
}

// Play and pause

TEST_F(MediaCommands, PauseShowsAtOnceAndReportsUndoItOnlyAfterTwoSeconds)
{
    startWithRemote();
    remote->report(playingAt(10, music));
    time.advance(4);
    service.togglePlayback();
    EXPECT_FALSE(shown().isPlaying);
    EXPECT_EQ(shown().playbackRate, 0);
    EXPECT_EQ(shown().elapsed, 14);
    EXPECT_EQ(remote->commands, QStringList{pause});

    time.advance(1.9);
    remote->report(playingAt(15.9, music));
    EXPECT_FALSE(shown().isPlaying);
    EXPECT_EQ(position(), 14);

    time.advance(0.1);
    remote->report(playingAt(16, music));
    EXPECT_TRUE(shown().isPlaying);
    EXPECT_EQ(position(), 16);
}

TEST_F(MediaCommands, PlayMovesOnFromWhereItWasPaused)
{
    startWithRemote();
    remote->report(paused(music));
    time.advance(30);
    service.togglePlayback();
    EXPECT_TRUE(shown().isPlaying);
    EXPECT_EQ(shown().playbackRate, 1);
    EXPECT_EQ(remote->commands, QStringList{play});
    time.advance(1.5);
    EXPECT_EQ(position(), 11.5);

    remote->report(paused(music));
    EXPECT_TRUE(shown().isPlaying) << "a report from before";
    EXPECT_EQ(shown().elapsed, 11.5);
    EXPECT_EQ(shown().playbackRate, 1);
    EXPECT_EQ(shown().elapsedUpdatedAt, time.now());
}

TEST_F(MediaCommands, ARateAboveTheUsualOneIsKept)
{
    startWithRemote();
    auto fast = paused(music);
    fast.playbackRate = 1.5;
    remote->report(fast);
    service.togglePlayback();
    EXPECT_EQ(shown().playbackRate, 1.5);
    time.advance(1);
    remote->report(fast);
    EXPECT_EQ(shown().playbackRate, 1.5);
    EXPECT_EQ(shown().elapsed, 11);
}

TEST_F(MediaCommands, APressOfPlayCountsAsHavingPlayed)
{
    startWithRemote();
    remote->report(paused(music));
    time.advance(30);
    service.togglePlayback();
    EXPECT_EQ(service.sessions().at(music).lastPlayedAt, time.now());
    EXPECT_EQ(service.sessions().at(music).observedAt, time.now());
    EXPECT_TRUE(service.sessions().at(music).track.isPlaying);
    const Date pressed = time.now();
    time.advance(1);
    service.togglePlayback();
    EXPECT_EQ(service.sessions().at(music).lastPlayedAt, pressed);
    EXPECT_EQ(service.sessions().at(music).observedAt, time.now());
}

TEST_F(MediaCommands, TheOverrideDoesNotEndBecauseTheSourceAgrees)
{
    startWithRemote();
    remote->report(playing(music));
    service.togglePlayback();
    time.advance(0.5);
    remote->report(paused(music));
    time.advance(0.5);
    remote->report(playing(music));
    EXPECT_FALSE(shown().isPlaying) << "the reports crossed";
}

TEST_F(MediaCommands, AnOverrideLeavesOtherSourcesAlone)
{
    startWithRemote();
    remote->report(playing(music));
    service.togglePlayback();
    remote->report(playing(browser));
    EXPECT_TRUE(shown().isPlaying);
    remote->report(playing(music));
    EXPECT_FALSE(shown().isPlaying) << "it stands for its own source";
}

TEST_F(MediaCommands, EachCommandIsAnnouncedAlsoWhenItLooksTheSame)
{
    startWithRemote();
    remote->report(paused(music));
    announcements.clear();
    time.advance(1);
    service.seek(10);
    EXPECT_EQ(announcements.count(), 1);
    EXPECT_EQ(shown().elapsedUpdatedAt, time.now());
    service.togglePlayback();
    EXPECT_EQ(announcements.count(), 2);
}

TEST_F(MediaCommands, ObserversFindTheCommandCompleteWhenTheyHearOfIt)
{
    startWithRemote();
    remote->report(playing(music));
    bool wasConsistent = false;
    const auto listen = QObject::connect(&service, &MediaProvider::nowPlayingChanged, [&] {
        wasConsistent = service.sessions().at(music).track == shown();
        remote->report(playing(music));
        wasConsistent = wasConsistent && !shown().isPlaying;
    });
    service.togglePlayback();
    QObject::disconnect(listen);
    EXPECT_TRUE(wasConsistent);
}

TEST_F(MediaCommands, WithoutTheRemoteAPlayerIsToldByScriptAndAskedAtOnce)
{
    startWithoutRemote();
    has(playing(spotify));
    poll();
    const int polls = applications->polls;
    service.togglePlayback();
    EXPECT_THAT(applications->commands, IsEmpty()) << "never on the main thread";
    time.runPosted();
    EXPECT_EQ(applications->commands, QStringList{QStringLiteral("toggle ") + spotify});
    EXPECT_EQ(applications->polls, polls + 1);
    EXPECT_THAT(remote->commands, IsEmpty());
}

TEST_F(MediaCommands, ARemoteThatCameUpMeanwhileSparesTheQuestion)
{
    startWithoutRemote();
    has(playing(spotify));
    poll();
    queue->hold();
    service.togglePlayback();
    service.stop();
    remote->canRun = true;
    startWithRemote();
    const int polls = applications->polls;
    queue->release();
    time.runPosted();
    EXPECT_EQ(applications->commands.size(), 1);
    EXPECT_EQ(applications->polls, polls);
}

TEST_F(MediaCommands, ABrowserWithoutTheRemoteShowsThePauseUntilItIsOver)
{
    startWithoutRemote();
    has(playing(browser));
    poll();
    service.togglePlayback();
    time.runPosted();
    EXPECT_THAT(applications->commands, IsEmpty());
    EXPECT_FALSE(shown().isPlaying);
    poll();
    EXPECT_FALSE(shown().isPlaying);
    poll();
    EXPECT_TRUE(shown().isPlaying);
}

// Seeking

TEST_F(MediaCommands, ASeekShowsAtOnceAndIsKeptWithinTheTrack)
{
    startWithRemote();
    remote->report(playing(music));
    service.seek(50);
    EXPECT_EQ(shown().elapsed, 50);
    EXPECT_EQ(service.sessions().at(music).track.elapsed, 50);
    service.seek(-3);
    EXPECT_EQ(shown().elapsed, 0);
    service.seek(1e9);
    EXPECT_EQ(shown().elapsed, 200);
    service.seek(std::numeric_limits<double>::quiet_NaN());
    EXPECT_EQ(shown().elapsed, 0);
    auto endless = playing(music);
    endless.duration.reset();
    remote->report(endless);
    service.seek(5000);
    EXPECT_EQ(shown().elapsed, 5000);
    EXPECT_THAT(remote->commands,
        ElementsAre(QStringLiteral("seek 50"), QStringLiteral("seek 0"), QStringLiteral("seek 200"),
            QStringLiteral("seek 0"), QStringLiteral("seek 5000")));
}

TEST_F(MediaCommands, ASeekEndsWithTheFirstReportNearItsTarget)
{
    startWithRemote();
    remote->report(playingAt(10, music));
    service.seek(100);
    time.advance(0.5);
    remote->report(playingAt(10.5, music));
    EXPECT_EQ(shown().elapsed, 100.5) << "a report from before";
    EXPECT_EQ(shown().elapsedUpdatedAt, time.now());
    time.advance(0.5);
    remote->report(playingAt(99.75, music));
    EXPECT_EQ(shown().elapsed, 99.75) << "1.25 s from where it should be";
    remote->report(playingAt(20, music));
    EXPECT_EQ(shown().elapsed, 20) << "the seek is over";
}

TEST_F(MediaCommands, ReportsFurtherAwayAreOverriddenForThreeSecondsAtMost)
{
    startWithRemote();
    remote->report(playingAt(10, music));
    service.seek(100);
    time.advance(2.75);
    remote->report(playingAt(101.25, music));
    EXPECT_EQ(shown().elapsed, 102.75) << "1.5 s from where it should be";
    time.advance(0.25);
    remote->report(playingAt(13, music));
    EXPECT_EQ(shown().elapsed, 13);
}

TEST_F(MediaCommands, ASeekLeavesOtherSourcesAlone)
{
    startWithRemote();
    auto nameless = playingAt(10, music);
    nameless.sourceBundleIdentifier.reset();
    nameless.sourceName = QStringLiteral("Player");
    remote->report(nameless);
    service.seek(100);
    remote->report(playingAt(50, music));
    EXPECT_EQ(shown().elapsed, 50);
    time.advance(1);
    remote->report(nameless);
    EXPECT_EQ(shown().elapsed, 101) << "it stands for its own source";
}

TEST_F(MediaCommands, APausedTrackStaysAtTheTargetOfItsSeek)
{
    startWithRemote();
    remote->report(paused(music));
    service.seek(100);
    time.advance(2);
    remote->report(paused(music));
    EXPECT_EQ(shown().elapsed, 100);
}

TEST_F(MediaCommands, AFastTrackIsExpectedWhereItsRateTakesIt)
{
    startWithRemote();
    auto fast = playing(music);
    fast.playbackRate = 2;
    remote->report(fast);
    service.seek(100);
    time.advance(2);
    fast.elapsedUpdatedAt = time.now();
    remote->report(fast);
    EXPECT_EQ(shown().elapsed, 104);
}

TEST_F(MediaCommands, ATrackThatPlaysWithoutARateIsExpectedAtTheUsualOne)
{
    startWithRemote();
    auto track = playing(music);
    track.playbackRate = 0;
    remote->report(track);
    service.seek(100);
    time.advance(2);
    remote->report(track);
    EXPECT_EQ(shown().elapsed, 102);
}

TEST_F(MediaCommands, AReportOfAWhileAgoCountsAsWhereItsTrackIsNow)
{
    startWithRemote();
    remote->report(playing(music));
    service.seek(100);
    auto report = playingAt(100.5, music);
    time.advance(2.5);
    remote->report(report);
    EXPECT_EQ(shown().elapsed, 100.5) << "it is near the target by now";
}

TEST_F(MediaCommands, ACorrectedPositionDoesNotLeaveTheTrack)
{
    startWithRemote();
    remote->report(playing(music));
    service.seek(199);
    time.advance(2);
    remote->report(playing(music));
    EXPECT_EQ(shown().elapsed, 200);
}

TEST_F(MediaCommands, ASeekFollowedByAChangeOfSongShowsTheNewSongAtItsOwnPosition)
{
    startWithRemote();
    remote->report(playing(music, QStringLiteral("One")));
    service.seek(100);
    time.advance(0.5);
    auto next = playing(music, QStringLiteral("Two"));
    next.elapsed = 0.25;
    remote->report(next);
    EXPECT_EQ(shown().title, QStringLiteral("Two"));
    EXPECT_EQ(shown().elapsed, 0.25);
    remote->report(playing(music, QStringLiteral("One")));
    EXPECT_EQ(shown().elapsed, 10) << "the seek was dropped for good";
}

TEST_F(MediaCommands, PauseAndSeekStandTogether)
{
    startWithRemote();
    remote->report(playingAt(10, music));
    service.togglePlayback();
    service.seek(100);
    time.advance(1);
    remote->report(playingAt(11, music));
    EXPECT_FALSE(shown().isPlaying);
    EXPECT_EQ(shown().elapsed, 100);
}

TEST_F(MediaCommands, ASeekInAPlayerGoesBothWays)
{
    startWithRemote();
    remote->report(playing(spotify));
    service.seek(50);
    time.runPosted();
    EXPECT_EQ(remote->commands, QStringList{QStringLiteral("seek 50")});
    EXPECT_EQ(applications->commands, QStringList{QStringLiteral("seek 50 ") + spotify});
}

TEST_F(MediaCommands, ASeekByScriptDoesNotWait)
{
    startWithoutRemote();
    has(playing(spotify));
    poll();
    queue->hold();
    service.seek(50);
    EXPECT_EQ(shown().elapsed, 50);
    const int polls = applications->polls;
    queue->release();
    time.runPosted();
    EXPECT_EQ(applications->commands, QStringList{QStringLiteral("seek 50 ") + spotify});
    EXPECT_EQ(applications->polls, polls) << "nothing follows a seek";
}

TEST_F(MediaCommands, ABrowserWithoutTheRemoteCannotBeSought)
{
    startWithoutRemote();
    has(playing(browser));
    poll();
    service.seek(50);
    time.runPosted();
    EXPECT_EQ(shown().elapsed, 50);
    EXPECT_THAT(applications->commands, IsEmpty());
    EXPECT_THAT(remote->commands, IsEmpty());
}

// From song to song

TEST_F(MediaCommands, PreviousTrackShowsTheStartAtOnceAndTheRestartedSongConfirmsIt)
{
    startWithRemote();
    remote->report(playingAt(60, music));
    service.previousTrack();
    EXPECT_EQ(shown().elapsed, 0);
    EXPECT_EQ(remote->commands, QStringList{QStringLiteral("send 5")});
    time.advance(0.5);
    remote->report(playingAt(60.5, music));
    EXPECT_EQ(shown().elapsed, 0.5) << "a report from before";
    time.advance(0.5);
    remote->report(playingAt(0.75, music));
    EXPECT_EQ(shown().elapsed, 0.75);
    remote->report(playingAt(60, music));
    EXPECT_EQ(shown().elapsed, 60) << "it was confirmed";
}

TEST_F(MediaCommands, PreviousTrackIsBelievedForLessThanTwoSeconds)
{
    startWithRemote();
    remote->report(playingAt(60, music));
    service.previousTrack();
    time.advance(1.8);
    remote->report(playingAt(61.8, music));
    EXPECT_EQ(shown().elapsed, 61.8);
}

TEST_F(MediaCommands, NextTrackChangesNothingBeforeTheSourceDoes)
{
    startWithRemote();
    remote->report(playing(music));
    announcements.clear();
    service.nextTrack();
    EXPECT_EQ(announcements.count(), 0);
    EXPECT_EQ(remote->commands, QStringList{QStringLiteral("send 4")});
}

TEST_F(MediaCommands, WithoutTheRemoteThereIsNoWayFromSongToSong)
{
    startWithoutRemote();
    has(playing(spotify));
    poll();
    service.nextTrack();
    service.previousTrack();
    time.runPosted();
    EXPECT_EQ(shown().elapsed, 0) << "the bar jumps all the same";
    EXPECT_THAT(remote->commands, IsEmpty());
    EXPECT_THAT(applications->commands, IsEmpty());
}

} // namespace
} // namespace brindle
