#include "foundation/SystemScheduler.h"
#include "foundation/ThreadQueue.h"
#include "support/EventLoop.h"
#include "unit/media/MediaFixture.h"

#include <future>
#include <limits>

namespace brindle {
namespace {

class MediaPolls : public SystemMedia
{
protected:
    void sounds(double level, bool muted = false) { audio.set(OutputLevel{level, muted}); }

    QSignalSpy volumes{&service, &MediaProvider::outputVolumeChanged};
};

// The fallback

TEST_F(MediaPolls, WhileTheRemoteRunsNoApplicationIsAskedAndNothingWakesUp)
{
    startWithRemote();
    has(playing(spotify));
    time.advance(10);
    const auto wakeUps = time.wakeUps();
    time.advance(3600);
    EXPECT_EQ(applications->polls, 0);
    EXPECT_EQ(time.wakeUps(), wakeUps);
    EXPECT_EQ(time.pendingCount(), 0);
}

TEST_F(MediaPolls, WithoutTheRemoteTheApplicationsAreAskedAtOnceAndEachOneAndAHalfSeconds)
{
    has(playing(spotify));
    startWithoutRemote();
    EXPECT_EQ(applications->polls, 1);
    EXPECT_EQ(shownSource(), spotify);
    time.advance(1.4);
    EXPECT_EQ(applications->polls, 1);
    time.advance(0.1);
    EXPECT_EQ(applications->polls, 2);
    time.advance(15);
    EXPECT_EQ(applications->polls, 12);
}

TEST_F(MediaPolls, ARemoteThatDiesInItsStartIsAsNone)
{
    class StillbornRemote final : public MediaRemote
    {
    public:
        bool start(UpdateHandler /*onUpdate*/, RunningHandler /*onRunningChanged*/) override { return true; }
        void stop() override { }
        bool isRunning() const override { return false; }
        void send(const QStringList & /*arguments*/) override { }
        void seek(double /*seconds*/) override { }
    };
    auto *asked = new ScriptedApplications;
    SystemMediaService other(std::make_unique<StillbornRemote>(), std::unique_ptr<ApplicationMedia>(asked),
        std::make_unique<FakeSerialQueue>(time), audio, workspace, time);
    other.start();
    EXPECT_TRUE(other.supportsTransportControls()) << "what the start returned";
    time.advance(1.5);
    EXPECT_EQ(asked->polls, 2);
}

TEST_F(MediaPolls, OnlyApplicationsThatRunAreAsked)
{
    startWithoutRemote();
    has(playing(spotify));
    has(playing(browser));
    quits(browser);
    poll();
    EXPECT_TRUE(knows(spotify));
    EXPECT_FALSE(knows(browser));
}

TEST_F(MediaPolls, APollThatHangsHoldsUpTheNextOnesWithoutPilingUp)
{
    startWithoutRemote();
    has(playing(spotify));
    queue->hold();
    time.advance(60);
    EXPECT_EQ(queue->waiting(), 1);
    EXPECT_TRUE(service.isRefreshInFlight());
    EXPECT_EQ(service.nowPlaying(), std::nullopt);
    queue->release();
    time.runPosted();
    EXPECT_EQ(shownSource(), spotify);
    EXPECT_FALSE(service.isRefreshInFlight());
    const int polls = applications->polls;
    poll();
    EXPECT_EQ(applications->polls, polls + 1);
}

TEST_F(MediaPolls, APlayerThatQuitsIsMarkedPausedAndForgottenAfterTwoHours)
{
    startWithoutRemote();
    has(playing(spotify));
    poll();
    const Date last = time.now();
    quits(spotify);
    time.advance(3.1);
    EXPECT_TRUE(shown().isPlaying);
    time.advance(1.5);
    EXPECT_FALSE(shown().isPlaying);
    EXPECT_EQ(shown().elapsed, 10) << "it stands where it was last seen";
    time.advance(7200 - (time.now() - last) - 0.5);
    EXPECT_TRUE(knows(spotify));
    poll();
    EXPECT_FALSE(knows(spotify));
    EXPECT_EQ(service.nowPlaying(), std::nullopt);
}

TEST_F(MediaPolls, WhatWasJustHeardOfIsNotMarkedPaused)
{
    startWithoutRemote();
    has(playing(spotify));
    poll();
    queue->hold();
    time.advance(3.0);
    quits(spotify);
    queue->release();
    time.runPosted();
    EXPECT_TRUE(shown().isPlaying);
}

TEST_F(MediaPolls, AStopEndsThePollsAndTheRemoteAndKeepsWhatIsShown)
{
    sounds(0.5);
    startWithRemote();
    remote->report(playing(music));
    service.stop();
    EXPECT_FALSE(service.isStarted());
    EXPECT_FALSE(remote->isRunning());
    EXPECT_FALSE(audio.isObserved());
    EXPECT_EQ(time.pendingCount(), 0);
    sounds(0.9);
    has(playing(spotify));
    time.advance(60);
    EXPECT_EQ(shownSource(), music);
    EXPECT_EQ(service.outputVolume(), 0.5);
    EXPECT_EQ(applications->polls, 0);
    service.stop();
}

TEST_F(MediaPolls, ASecondStartChangesNothing)
{
    has(playing(spotify));
    startWithoutRemote();
    startWithoutRemote();
    EXPECT_EQ(applications->polls, 1);
    poll();
    EXPECT_EQ(applications->polls, 2);
}

TEST_F(MediaPolls, AStopLetsTheNextStartAskWhateverHangs)
{
    startWithoutRemote();
    queue->hold();
    poll();
    EXPECT_TRUE(service.isRefreshInFlight());
    service.stop();
    EXPECT_FALSE(service.isRefreshInFlight());
    service.start();
    EXPECT_EQ(queue->waiting(), 2);
}

TEST_F(MediaPolls, AnAnswerThatComesAfterTheServiceIsGoneFindsNobody)
{
    class PromptApplications final : public ApplicationMedia
    {
    public:
        PromptApplications(NowPlayingTrack answer, std::promise<void> &asked)
            : m_answer(std::move(answer))
            , m_asked(asked)
        { }
        QList<NowPlayingTrack> tracks(const QSet<QString> & /*running*/) override
        {
            m_asked.set_value();
            return {m_answer};
        }
        bool togglePlayback(const std::optional<QString> & /*bundle*/) override { return false; }
        bool seek(double /*seconds*/, const std::optional<QString> & /*bundle*/) override { return false; }
        bool isControllable(const std::optional<QString> & /*bundle*/) const override { return false; }

    private:
        const NowPlayingTrack m_answer;
        std::promise<void> &m_asked;
    };
    class CuriousWorkspace final : public FakeWorkspace
    {
    public:
        mutable int questions = 0;
        std::optional<QUrl> urlForApplication(const QString & /*bundle*/) const override
        {
            ++questions;
            return std::nullopt;
        }
    };
    SystemScheduler scheduler;
    CuriousWorkspace desktop;
    std::promise<void> asked;
    auto *noRemote = new ScriptedRemote(scheduler);
    noRemote->canRun = false;
    auto gone = std::make_unique<SystemMediaService>(std::unique_ptr<MediaRemote>(noRemote),
        std::make_unique<PromptApplications>(playing(music), asked),
        std::make_unique<ThreadQueue>(QStringLiteral("com.brindle.media-fallback")), audio, desktop,
        scheduler);
    gone->start();
    asked.get_future().wait();
    gone.reset();
    test::deliverEvents();
    EXPECT_EQ(desktop.questions, 0);
}

// The output's level

TEST_F(MediaPolls, TheVolumeIsReadAtTheStartAndFollowedFromThen)
{
    EXPECT_EQ(service.outputVolume(), 0.62);
    sounds(0.3);
    startWithRemote();
    EXPECT_EQ(service.outputVolume(), 0.3);
    time.advance(1);
    sounds(0.4);
    EXPECT_EQ(service.outputVolume(), 0.3);
    time.advance(0.16);
    EXPECT_EQ(service.outputVolume(), 0.4);
    EXPECT_EQ(volumes.count(), 2);
}

TEST_F(MediaPolls, MutedOutputPublishesZero)
{
    sounds(0.8, true);
    startWithRemote();
    EXPECT_EQ(service.outputVolume(), 0);
    sounds(0.8);
    time.advance(0.2);
    EXPECT_EQ(service.outputVolume(), 0.8);
}

TEST_F(MediaPolls, NoiseDoesNotWakeObservers)
{
    sounds(0.5);
    startWithRemote();
    volumes.clear();
    sounds(0.504);
    time.advance(1);
    EXPECT_EQ(volumes.count(), 0);
    EXPECT_EQ(service.outputVolume(), 0.5);
    sounds(0.506);
    time.advance(1);
    EXPECT_EQ(volumes.count(), 1);
    EXPECT_EQ(service.outputVolume(), 0.506);
}

TEST_F(MediaPolls, ALevelBeyondItsRangeIsCutAndOneThatIsNoNumberIgnored)
{
    sounds(1.5);
    startWithRemote();
    EXPECT_EQ(service.outputVolume(), 1);
    sounds(std::numeric_limits<double>::quiet_NaN());
    time.advance(1);
    EXPECT_EQ(service.outputVolume(), 1);
    sounds(-1);
    time.advance(1);
    EXPECT_EQ(service.outputVolume(), 0);
}

TEST_F(MediaPolls, AReadingThatFailsKeepsTheVolume)
{
    sounds(0.5);
    startWithRemote();
    audio.set(std::nullopt);
    time.advance(1);
    EXPECT_EQ(service.outputVolume(), 0.5);
    sounds(0.9);
    time.advance(1);
    EXPECT_EQ(service.outputVolume(), 0.9);
}

TEST_F(MediaPolls, AnOutputThatAnnouncesNothingIsReadSixTimesASecond)
{
    audio.refusesNotification = true;
    sounds(0.5);
    startWithRemote();
    audio.readings = 0;
    time.advance(16.1);
    EXPECT_EQ(audio.readings, 100);
    sounds(0.7);
    time.advance(0.16);
    EXPECT_EQ(service.outputVolume(), 0.7);
}

} // namespace
} // namespace brindle
