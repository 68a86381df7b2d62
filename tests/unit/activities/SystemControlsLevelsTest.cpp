#include "unit/activities/SystemControlsFixture.h"

namespace brindle {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class SystemControlsLevels : public SystemControls
{
protected:
    /// The observer runs on these levels.
    void observe(OutputLevel volume, std::optional<double> brightness)
    {
        machine.audio.set(volume);
        machine.brightness.set(brightness);
        startWith(true);
        passTicks(2);
        ASSERT_THAT(news(), IsEmpty());
    }
    void volumeBecomes(std::optional<OutputLevel> volume)
    {
        machine.audio.set(volume);
        passTicks(2);
    }
    void brightnessBecomes(std::optional<double> brightness)
    {
        machine.brightness.set(brightness);
        passTicks(2);
    }
};

TEST_F(SystemControlsLevels, ChangesShowWithoutThePermission)
{
    observe({0.5, false}, 0.5);
    EXPECT_EQ(service.permissionState(), State::permissionRequired);
    volumeBecomes({{0.6, false}});
    EXPECT_THAT(news(), ElementsAre(sound(0.6, middleSymbol)));
    brightnessBecomes(0.75);
    EXPECT_THAT(news(), ElementsAre(display(0.75)));
}

TEST_F(SystemControlsLevels, TheFirstTickPostsNothingForTheStartHasReadTheLevels)
{
    machine.audio.set({{0.5, false}});
    machine.brightness.set(0.5);
    startWith(true);
    passTicks(1);
    EXPECT_THAT(news(), IsEmpty());
    EXPECT_EQ(machine.audio.readings, 2);
    EXPECT_EQ(machine.brightness.readings, 2);
}

TEST_F(SystemControlsLevels, AChangeShowsAtTheNextTick)
{
    observe({0.5, false}, {});
    machine.audio.set({{0.6, false}});
    machine.time.advance(tick / 2);
    EXPECT_THAT(news(), IsEmpty());
    machine.time.advance(tick / 2);
    EXPECT_THAT(news(), ElementsAre(sound(0.6, middleSymbol)));
}

TEST_F(SystemControlsLevels, AChangeWithinTheNoisePostsNothingAndAMuteAlonePosts)
{
    observe({0.5, false}, 0.5);
    volumeBecomes({{0.503, false}});
    volumeBecomes({{0.5, false}});
    volumeBecomes({{0.497, false}});
    EXPECT_THAT(news(), IsEmpty());
    volumeBecomes({{0.497, true}});
    EXPECT_THAT(news(), ElementsAre(sound(0, mutedSymbol)));
    volumeBecomes({{0.497, false}});
    EXPECT_THAT(news(), ElementsAre(sound(0.497, middleSymbol)));
    volumeBecomes({{0.5004, false}});
    EXPECT_THAT(news(), ElementsAre(sound(0.5004, middleSymbol)));
}

TEST_F(SystemControlsLevels, AChangeOfTheBrightnessWithinTheNoisePostsNothing)
{
    observe({0.5, false}, 0.3);
    brightnessBecomes(0.303);
    brightnessBecomes(0.3);
    EXPECT_THAT(news(), IsEmpty());
    brightnessBecomes(0.3031);
    EXPECT_THAT(news(), ElementsAre(display(0.3031)));
}

// The comparison is with the tick before, however far that has crept.
TEST_F(SystemControlsLevels, ManyChangesWithinTheNoisePostNothingTogether)
{
    observe({0.5, false}, {});
    for (int step = 1; step <= 20; ++step)
        volumeBecomes({{0.5 + step * 0.002, false}});
    EXPECT_THAT(news(), IsEmpty());
}

TEST_F(SystemControlsLevels, ManyChangesWithinATickAreOneDisplayOfTheLast)
{
    observe({0.1, false}, {});
    for (int step = 1; step <= 20; ++step)
        machine.audio.set({{0.1 + step * 0.02, false}});
    passTicks(2);
    EXPECT_THAT(news(), ElementsAre(sound(0.5, middleSymbol)));
}

TEST_F(SystemControlsLevels, TheSymbolFollowsTheLevel)
{
    observe({0.2, false}, {});
    const auto shownAt = [this](double level) {
        volumeBecomes({{level, false}});
        return news();
    };
    EXPECT_THAT(shownAt(0.34), ElementsAre(sound(0.34, middleSymbol)));
    EXPECT_THAT(shownAt(0.3), ElementsAre(sound(0.3, lowSymbol)));
    EXPECT_THAT(shownAt(0.67), ElementsAre(sound(0.67, fullSymbol)));
    EXPECT_THAT(shownAt(0.66), ElementsAre(sound(0.66, middleSymbol)));
    EXPECT_THAT(shownAt(0.0005), ElementsAre(sound(0.0005, mutedSymbol)));
    EXPECT_THAT(shownAt(0.0050), ElementsAre(sound(0.0050, lowSymbol)));
    EXPECT_THAT(shownAt(0.001), ElementsAre(sound(0.001, mutedSymbol)));
    EXPECT_THAT(shownAt(0.0041), ElementsAre(sound(0.0041, lowSymbol)));
    EXPECT_THAT(shownAt(0), ElementsAre(sound(0, mutedSymbol)));
    EXPECT_THAT(shownAt(1), ElementsAre(sound(1, fullSymbol)));
}

TEST_F(SystemControlsLevels, LevelsBeyondTheirRangeAreHeldToIt)
{
    observe({0.5, false}, 0.5);
    volumeBecomes({{1.5, false}});
    EXPECT_THAT(news(), ElementsAre(sound(1, fullSymbol)));
    volumeBecomes({{-1, false}});
    EXPECT_THAT(news(), ElementsAre(sound(0, mutedSymbol)));
    brightnessBecomes(7);
    EXPECT_THAT(news(), ElementsAre(display(1)));
}

TEST_F(SystemControlsLevels, AnActivityIsALevelThatStandsForTheWholeFamily)
{
    observe({0.5, false}, 0.5);
    volumeBecomes({{0.6, false}});
    ASSERT_EQ(posted.size(), 1);
    EXPECT_EQ(posted[0].id, service.soundActivityID());
    EXPECT_EQ(posted[0].type, ActivityType::systemControl);
    EXPECT_EQ(posted[0].priority, ActivityPriority::systemControl);
    EXPECT_EQ(posted[0].duration, 1.45);
    EXPECT_NEAR(machine.time.now() - posted[0].createdAt, tick, 1e-6);
    brightnessBecomes(0.6);
    ASSERT_EQ(posted.size(), 2);
    EXPECT_EQ(posted[1].id, service.displayActivityID());
    EXPECT_NE(posted[1].id, posted[0].id);
    EXPECT_EQ(posted[1].type, ActivityType::systemControl);
    EXPECT_EQ(posted[1].priority, ActivityPriority::systemControl);
    EXPECT_EQ(posted[1].duration, 1.45);
    volumeBecomes({{0.7, false}});
    EXPECT_EQ(posted[2].id, posted[0].id);
}

TEST_F(SystemControlsLevels, ALevelThatCannotBeReadPostsNothingAndLeavesTheLastOneAlone)
{
    observe({0.5, false}, 0.5);
    volumeBecomes({});
    brightnessBecomes({});
    volumeBecomes({{0.5, false}});
    brightnessBecomes(0.5);
    EXPECT_THAT(news(), IsEmpty());
    volumeBecomes({});
    volumeBecomes({{0.7, false}});
    brightnessBecomes({});
    brightnessBecomes(0.7);
    EXPECT_THAT(news(), ElementsAre(sound(0.7, fullSymbol), display(0.7)));
}

TEST_F(SystemControlsLevels, ALevelThatIsKnownOnlyLaterIsNoChange)
{
    startWith(true);
    volumeBecomes({{0.5, false}});
    brightnessBecomes(0.5);
    EXPECT_THAT(news(), IsEmpty());
    volumeBecomes({{0.6, false}});
    EXPECT_THAT(news(), ElementsAre(sound(0.6, middleSymbol)));
}

TEST_F(SystemControlsLevels, WhileNothingChangesTheObserverRests)
{
    observe({0.5, false}, 0.5);
    EXPECT_EQ(machine.time.pendingCount(), 0);
    const int readings = machine.audio.readings;
    machine.time.advance(3600);
    EXPECT_EQ(machine.audio.readings, readings);
    volumeBecomes({{0.6, false}});
    EXPECT_THAT(news(), ElementsAre(sound(0.6, middleSymbol)));
}

TEST_F(SystemControlsLevels, WhereEitherLevelIsNotAnnouncedBothAreReadAtEachTick)
{
    machine.brightness.refusesNotification = true;
    observe({0.5, false}, 0.5);
    EXPECT_FALSE(machine.audio.isObserved());
    const int readings = machine.audio.readings;
    machine.time.advance(20 * tick);
    EXPECT_EQ(machine.audio.readings, readings + 20);
    brightnessBecomes(0.6);
    volumeBecomes({{0.6, false}});
    EXPECT_THAT(news(), ElementsAre(display(0.6), sound(0.6, middleSymbol)));
}

TEST_F(SystemControlsLevels, NothingIsObservedWhileTheSettingIsOff)
{
    machine.audio.set({{0.5, false}});
    machine.brightness.set(0.5);
    machine.monitoring.isGranted = true;
    startWith(false);
    EXPECT_TRUE(isAtRest());
    EXPECT_EQ(machine.audio.readings, 0);
    EXPECT_EQ(machine.brightness.readings, 0);
    EXPECT_EQ(machine.monitoring.preflights, 0);
    EXPECT_EQ(service.permissionState(), State::disabled);

    setEnabled(true);
    EXPECT_TRUE(service.isObservingLevels());
    EXPECT_TRUE(service.isMonitoringKeys());
    passTicks(2);

    setEnabled(false);
    EXPECT_TRUE(isAtRest());
    const int readings = machine.audio.readings;
    volumeBecomes({{0.9, false}});
    brightnessBecomes(0.9);
    EXPECT_EQ(machine.audio.readings, readings);
    EXPECT_THAT(news(), IsEmpty());
}

TEST_F(SystemControlsLevels, SwitchingItOnAgainComparesWithTheLevelsOfThen)
{
    observe({0.5, false}, 0.5);
    setEnabled(false);
    machine.audio.set({{0.9, false}});
    machine.brightness.set(0.9);
    setEnabled(true);
    passTicks(2);
    EXPECT_THAT(news(), IsEmpty());
}

TEST_F(SystemControlsLevels, StoppingEndsEverythingAndStartingResumesIt)
{
    machine.monitoring.isGranted = true;
    observe({0.5, false}, 0.5);
    service.stop();
    EXPECT_TRUE(isAtRest());
    EXPECT_FALSE(machine.host.isActivationObserved());
    EXPECT_EQ(service.permissionState(), State::disabled);
    setEnabled(false);
    setEnabled(true);
    EXPECT_TRUE(isAtRest());

    service.start();
    EXPECT_EQ(service.permissionState(), State::authorized);
    volumeBecomes({{0.6, false}});
    EXPECT_THAT(news(), ElementsAre(sound(0.6, middleSymbol)));
}

TEST_F(SystemControlsLevels, ASecondStartChangesNothing)
{
    observe({0.5, false}, 0.5);
    const int readings = machine.audio.readings;
    service.start();
    EXPECT_EQ(machine.audio.readings, readings);
}

TEST_F(SystemControlsLevels, AChangeOfTheSettingThatIsOnItsWayEndsWithTheService)
{
    startWith(false);
    settings.setSystemControlsEnabled(true);
    service.stop();
    machine.time.runPosted();
    EXPECT_TRUE(isAtRest());
}

TEST_F(SystemControlsLevels, SwitchingOnAndOffWithinATurnLeavesItOff)
{
    startWith(false);
    settings.setSystemControlsEnabled(true);
    settings.setSystemControlsEnabled(false);
    machine.time.runPosted();
    EXPECT_TRUE(isAtRest());
    EXPECT_EQ(service.permissionState(), State::disabled);
}

} // namespace
} // namespace brindle
