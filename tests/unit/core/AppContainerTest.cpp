#include "core/AppContainer.h"

#include "activities/ActivityCoordinator.h"
#include "activities/BatteryMonitor.h"
#include "activities/BluetoothMonitor.h"
#include "activities/SystemControlsService.h"
#include "core/SettingsStore.h"
#include "media/MediaProvider.h"
#include "support/FakeAdapter.h"
#include "support/Session.h"

#include <gtest/gtest.h>

namespace brindle {
namespace {

class AppContainerTest : public testing::Test
{
protected:
    FakePlatform platform;
    AppContainer container{platform};
};

TEST_F(AppContainerTest, IsBuiltStoppedWithEveryServiceAtRest)
{
    EXPECT_FALSE(container.isStarted());
    EXPECT_FALSE(container.battery().isObserving());
    EXPECT_FALSE(container.bluetooth().isObserving());
    EXPECT_FALSE(container.systemControls().isObservingLevels());
    EXPECT_EQ(container.activities().current(), std::nullopt);
    EXPECT_TRUE(container.activities().queue().isEmpty());
}

TEST_F(AppContainerTest, WithoutAnAdapterTheApplicationsAreAskedWhatTheyPlay)
{
    const QString player = QStringLiteral("com.spotify.client");
    platform.applications.running = {player};
    container.start();
    platform.time.runPosted();
    ASSERT_FALSE(platform.scripts.sources.isEmpty());
    EXPECT_TRUE(platform.scripts.sources.constFirst().contains(player));
    EXPECT_EQ(container.media().nowPlaying(), std::nullopt);
}

TEST_F(AppContainerTest, WhatTheAdapterReportsIsShownAndCanBePaused)
{
    const FakeAdapter adapter(platform);
    platform.audio.set(OutputLevel{0.25, false});
    container.start();
    platform.time.runPosted();
    EXPECT_EQ(container.media().outputVolume(), 0.25);
    ASSERT_TRUE(adapter.isRunning());
    adapter.report({{QStringLiteral("title"), QStringLiteral("Song")}, {QStringLiteral("playing"), true}});
    platform.time.runPosted();
    ASSERT_TRUE(container.media().nowPlaying());
    EXPECT_EQ(container.media().nowPlaying()->title, QStringLiteral("Song"));

    container.media().togglePlayback();
    platform.time.runPosted();
    EXPECT_EQ(adapter.commands(), QStringList{QStringLiteral("send 1")});
    EXPECT_FALSE(container.media().nowPlaying()->isPlaying);

    container.stop();
    EXPECT_FALSE(adapter.isRunning());
    EXPECT_TRUE(container.media().nowPlaying());
}

TEST_F(AppContainerTest, MediaStartsAfterTheOtherServicesAndStopsAfterThem)
{
    class Onlooker final : public MediaProvider
    {
    public:
        const AppContainer *container = nullptr;
        QStringList seen;

        void start() override { look(); }
        void stop() override { look(); }
        const std::optional<NowPlayingTrack> &nowPlaying() const override { return m_nothing; }
        double outputVolume() const override { return 0; }
        void togglePlayback() override { }
        void seek(double /*seconds*/) override { }
        void previousTrack() override { }
        void nextTrack() override { }

    private:
        void look()
        {
            seen.append(container->battery().isObserving() && container->bluetooth().isObserving()
                    ? QStringLiteral("others run")
                    : QStringLiteral("others rest"));
        }
        const std::optional<NowPlayingTrack> m_nothing;
    };
    auto *onlooker = new Onlooker;
    AppContainer watched{platform, std::unique_ptr<MediaProvider>(onlooker)};
    onlooker->container = &watched;
    watched.start();
    watched.stop();
    EXPECT_EQ(onlooker->seen, (QStringList{QStringLiteral("others run"), QStringLiteral("others rest")}));
}

TEST_F(AppContainerTest, ASecondStartChangesNothing)
{
    container.start();
    EXPECT_TRUE(container.isStarted());
    EXPECT_EQ(platform.bluetooth.connectRegistrations(), 1);
    container.start();
    EXPECT_EQ(platform.bluetooth.connectRegistrations(), 1);
    EXPECT_EQ(platform.bluetooth.registrationsMade(), 1);
}

TEST_F(AppContainerTest, AStopBeforeAnyStartDoesNothing)
{
    container.stop();
    EXPECT_FALSE(container.isStarted());
    container.start();
    EXPECT_TRUE(container.battery().isObserving());
}

TEST_F(AppContainerTest, AStopEndsWhatTheStartBegan)
{
    container.settings().setSystemControlsEnabled(true);
    container.start();
    EXPECT_TRUE(container.systemControls().isObservingLevels());
    container.stop();
    EXPECT_FALSE(container.systemControls().isObservingLevels());
    EXPECT_FALSE(container.isStarted());
    EXPECT_FALSE(container.battery().isObserving());
    EXPECT_FALSE(container.bluetooth().isObserving());
    EXPECT_FALSE(platform.power.isObserved());
    EXPECT_EQ(platform.bluetooth.connectRegistrations(), 0);
}

TEST_F(AppContainerTest, ARestartRunsTheWholeStartOnTheSameServices)
{
    container.start();
    BatteryMonitor *battery = &container.battery();
    BluetoothMonitor *bluetooth = &container.bluetooth();
    container.stop();
    container.start();
    EXPECT_EQ(&container.battery(), battery);
    EXPECT_EQ(&container.bluetooth(), bluetooth);
    EXPECT_TRUE(container.battery().isObserving());
    EXPECT_TRUE(container.bluetooth().isObserving());
    EXPECT_EQ(platform.bluetooth.connectRegistrations(), 1);
    EXPECT_EQ(platform.bluetooth.registrationsMade(), 2);
}

TEST_F(AppContainerTest, ManyContainersStandSideBySide)
{
    FakePlatform otherPlatform;
    AppContainer other{otherPlatform};
    other.start();
    other.settings().setHoverDelay(3);
    EXPECT_FALSE(container.isStarted());
    EXPECT_EQ(container.settings().hoverDelay(), 0.05);
}

} // namespace
} // namespace brindle
