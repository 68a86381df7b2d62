#pragma once

#include <QString>

#include <cstdint>
#include <vector>

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
    changeReduceMotion,
    changeScreens,
    jumpClock,
    stopOrStart,
    relaunch,
};

/// One event. It holds all chance that it needs, so that any trail of events plays the same each time, also
/// after others were taken out of it. What an event cannot do in the state that it meets, it leaves.
struct Event
{
    Act act = Act::movePointer;
    /// Which of the ways of the act; each act takes it modulo what it has.
    unsigned choice = 0;
    /// 0 to 1 each; places and amounts.
    double x = 0;
    double y = 0;
    /// Whether what was posted runs before the next event.
    bool endsTurn = true;
    /// Seconds that pass afterwards.
    double pause = 0;
};

using Trail = std::vector<Event>;

/// A random day; the same for the same seed.
Trail makeDay(std::uint64_t seed, std::size_t count);

QString describe(const Event &event);

} // namespace brindle::simulation
