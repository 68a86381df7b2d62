#include "core/AppContainer.h"

#include "activities/ActivityCoordinator.h"
#include "activities/BatteryMonitor.h"
#include "activities/BluetoothMonitor.h"
#include "activities/SystemControlsService.h"
#include "core/SettingsStore.h"
#include "media/MediaProvider.h"
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

TEST_F(AppContainerTest, WithoutMediaNothingPlays)
{
    EXPECT_EQ(container.media().nowPlaying(), std::nullopt);
    EXPECT_EQ(container.media().outputVolume(), 0);
    container.media().togglePlayback();
    container.media().seek(1);
    container.media().nextTrack();
    container.media().previousTrack();
    EXPECT_EQ(container.media().nowPlaying(), std::nullopt);
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
