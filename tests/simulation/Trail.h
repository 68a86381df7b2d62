#pragma once

#include "support/Trails.h"

namespace brindle::simulation {

/// What can happen to the program in a day.
enum class Act {
    movePointer,
    pressButton,
    releaseButton,
    pickUpDrag,
    staleDrag,
    tap,
    clickElsewhere,
    toggle,
    pressKey,
    scroll,
    beginInteraction,
    endInteraction,
    layOutZones,
    changeSetting,
    postActivity,
    changePower,
    changeBluetooth,
    changeBrightness,
    pressMediaKey,
    changePermission,
    requestPermission,
    turnToProgram,
    changeReduceMotion,
    changeScreens,
    reportTrack,
    endAdapter,
    answerScripts,
    hangScripts,
    turnVolume,
    commandMedia,
    jumpClock,
    stopOrStart,
    relaunch,
};

using Event = trails::Event<Act>;
using Trail = trails::Trail<Act>;

/// All that happens, and how often.
extern const std::span<const trails::Habit<Act>> habits;

/// A random day; the same for the same seed.
inline Trail makeDay(std::uint64_t seed, std::size_t count)
{
    return trails::makeDay(seed, count, habits);
}

} // namespace brindle::simulation
