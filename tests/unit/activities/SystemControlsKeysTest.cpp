#include "unit/activities/SystemControlsFixture.h"

#include <thread>

namespace brindle {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class SystemControlsKeys : public SystemControls
{
protected:
    /// The keys are seen, and the machine has these levels.
    void monitor(std::optional<OutputLevel> volume, std::optional<double> brightness)
    {
        machine.monitoring.isGranted = true;
        machine.audio.set(volume);
        machine.brightness.set(brightness);
        startWith(true);
        passTicks(2);
        ASSERT_EQ(service.permissionState(), State::authorized);
        ASSERT_THAT(news(), IsEmpty());
    }
};

TEST_F(SystemControlsKeys, SoundUpAtFullVolumeShowsTheFullBarWhileTheObserverStaysSilent)
{
    monitor({{1, false}}, {});
    press(MediaKeyCode::soundUp);
    EXPECT_THAT(news(), ElementsAre(sound(1, fullSymbol)));
    passTicks(5);
    EXPECT_THAT(news(), IsEmpty());
}

TEST_F(SystemControlsKeys, EachSoundKeyShowsWhatTheVolumeIsByThen)
{
    monitor({{0.5, false}}, {});
    press(MediaKeyCode::soundDown);
    EXPECT_THAT(news(), ElementsAre(sound(0.5, middleSymbol)));
    machine.keys.press(MediaKeyCode::mute);
    machine.audio.set({{0.5, true}});
    machine.time.advance(keyDelay);
    EXPECT_THAT(news(), ElementsAre(sound(0, mutedSymbol)));
}

TEST_F(SystemControlsKeys, AKeyShowsAfterTheSystemHasHadTimeToObey)
{
    monitor({{0.5, false}}, {});
    machine.keys.press(MediaKeyCode::soundUp);
    machine.time.advance(keyDelay - 0.001);
    EXPECT_THAT(news(), IsEmpty());
    machine.time.advance(0.001);
    EXPECT_THAT(news(), ElementsAre(sound(0.5, middleSymbol)));
}

TEST_F(SystemControlsKeys, AKeyAndTheObserverTogetherAreOneDisplay)
{
    monitor({{0.5, false}}, {});
    machine.keys.press(MediaKeyCode::soundUp);
    machine.audio.set({{0.56, false}});
    passTicks(2);
    EXPECT_EQ(coordinator.current()->content, sound(0.56, middleSymbol));
    EXPECT_TRUE(coordinator.queue().isEmpty());
}

TEST_F(SystemControlsKeys, KeysInQuickSuccessionEachShow)
{
    monitor({{1, false}}, {});
    for (int press = 0; press < 3; ++press)
        machine.keys.press(MediaKeyCode::soundUp);
    machine.time.advance(keyDelay);
    EXPECT_EQ(news().size(), 3);
}

TEST_F(SystemControlsKeys, AVolumeThatCannotBeReadShowsNothing)
{
    monitor({}, {});
    press(MediaKeyCode::soundUp);
    press(MediaKeyCode::mute);
    EXPECT_THAT(news(), IsEmpty());
}

TEST_F(SystemControlsKeys, ADisplayThatCannotSayIsGuessedFromTheMiddleUpwards)
{
    monitor({}, {});
    press(MediaKeyCode::brightnessUp);
    press(MediaKeyCode::brightnessUp);
    EXPECT_THAT(news(), ElementsAre(display(0.5625), display(0.625)));
}

TEST_F(SystemControlsKeys, TheGuessEndsAtNothingAndAtFull)
{
    monitor({}, {});
    for (int step = 0; step < 7; ++step)
        press(MediaKeyCode::brightnessDown);
    EXPECT_EQ(service.estimatedBrightness(), 0.0625);
    news();
    press(MediaKeyCode::brightnessDown);
    press(MediaKeyCode::brightnessDown);
    EXPECT_THAT(news(), ElementsAre(display(0), display(0)));
    for (int step = 0; step < 17; ++step)
        press(MediaKeyCode::brightnessUp);
    EXPECT_EQ(news().constLast(), display(1));
}

TEST_F(SystemControlsKeys, ABrightnessThatCanBeReadIsShownAsItIs)
{
    monitor({}, 0.31);
    press(MediaKeyCode::brightnessUp);
    EXPECT_THAT(news(), ElementsAre(display(0.31)));
    EXPECT_EQ(service.estimatedBrightness(), 0.31);
}

TEST_F(SystemControlsKeys, AnObservedBrightnessIsWhereTheNextGuessStarts)
{
    monitor({}, 0.5);
    press(MediaKeyCode::brightnessUp);
    machine.brightness.set(0.25);
    passTicks(2);
    machine.brightness.set({});
    passTicks(2);
    news();
    press(MediaKeyCode::brightnessUp);
    EXPECT_THAT(news(), ElementsAre(display(0.3125)));
}

TEST_F(SystemControlsKeys, ABrightnessThatReturnsAsItWasEndsTheGuess)
{
    monitor({}, 0.5);
    machine.brightness.set({});
    press(MediaKeyCode::brightnessUp);
    EXPECT_EQ(service.estimatedBrightness(), 0.5625);
    machine.brightness.set(0.5);
    passTicks(2);
    EXPECT_EQ(service.estimatedBrightness(), 0.5);
}

TEST_F(SystemControlsKeys, OnlyTheFiveKeysAndOnlyTheirComingDownCount)
{
    monitor({{0.5, false}}, 0.5);
    for (const long key : {4L, 5L, 6L, 8L, 16L, 19L, 0x7fffL, -1L})
        press(key);
    for (const long key : {MediaKeyCode::soundUp, MediaKeyCode::brightnessUp, MediaKeyCode::mute}) {
        machine.keys.send(mediaKeyData(key, MediaKeyState::up));
        machine.keys.send(key << 16);
        machine.keys.send(0xff00 | (key << 16));
    }
    machine.time.advance(1);
    EXPECT_THAT(news(), IsEmpty());
}

TEST_F(SystemControlsKeys, TheLowestBitsOfAnEventSayNothing)
{
    monitor({{0.5, false}}, {});
    machine.keys.send(mediaKeyData(MediaKeyCode::soundUp, MediaKeyState::down) | 1);
    machine.time.advance(keyDelay);
    EXPECT_THAT(news(), ElementsAre(sound(0.5, middleSymbol)));
}

TEST_F(SystemControlsKeys, AnEventMayComeOnAnyThread)
{
    monitor({{0.5, false}}, {});
    std::thread([this] { machine.keys.press(MediaKeyCode::soundUp); }).join();
    EXPECT_THAT(news(), IsEmpty());
    machine.time.advance(keyDelay);
    EXPECT_THAT(news(), ElementsAre(sound(0.5, middleSymbol)));
}

TEST_F(SystemControlsKeys, AKeyFromJustBeforeTheSettingWentOffShowsNothing)
{
    monitor({{0.5, false}}, {});
    machine.keys.press(MediaKeyCode::soundUp);
    machine.time.runPosted();
    machine.keys.press(MediaKeyCode::soundUp);
    setEnabled(false);
    machine.time.advance(1);
    EXPECT_THAT(news(), IsEmpty());
    EXPECT_TRUE(isAtRest());
}

TEST_F(SystemControlsKeys, AKeyThatOutlivesTheServiceFindsNobody)
{
    auto gone = std::make_unique<SystemControlsService>(coordinator, settings,
        SystemControlsService::Ports{
            machine.audio, machine.brightness, machine.keys, machine.monitoring, machine.host},
        machine.time);
    machine.monitoring.isGranted = true;
    machine.audio.set({{0.5, false}});
    settings.setSystemControlsEnabled(true);
    gone->start();
    machine.keys.press(MediaKeyCode::soundUp);
    machine.time.runPosted();
    machine.keys.press(MediaKeyCode::soundUp);
    gone.reset();
    machine.time.advance(1);
    EXPECT_THAT(news(), IsEmpty());
    EXPECT_TRUE(isAtRest());
}

} // namespace
} // namespace brindle
