#include "simulation/Trail.h"

#include <array>

namespace brindle::simulation {

namespace {

constexpr std::array table{
    trails::Habit{Act::movePointer, 34, "move the pointer"},
    trails::Habit{Act::pressButton, 3, "press the button"},
    trails::Habit{Act::releaseButton, 5, "release the button"},
    trails::Habit{Act::pickUpDrag, 5, "pick up a drag elsewhere"},
    trails::Habit{Act::staleDrag, 2, "report a drag that is over"},
    trails::Habit{Act::tap, 3, "tap the island"},
    trails::Habit{Act::clickElsewhere, 4, "click elsewhere"},
    trails::Habit{Act::toggle, 4, "toggle"},
    trails::Habit{Act::pressKey, 6, "press a key"},
    trails::Habit{Act::scroll, 5, "scroll"},
    trails::Habit{Act::beginInteraction, 4, "begin an interaction"},
    trails::Habit{Act::endInteraction, 5, "end an interaction"},
    trails::Habit{Act::layOutZones, 3, "lay out the drop zones"},
    trails::Habit{Act::changeSetting, 6, "change a setting"},
    trails::Habit{Act::postActivity, 10, "post an activity"},
    trails::Habit{Act::changePower, 4, "change the power"},
    trails::Habit{Act::changeBluetooth, 4, "connect or disconnect a device"},
    trails::Habit{Act::changeBrightness, 3, "turn the brightness"},
    trails::Habit{Act::pressMediaKey, 4, "press a media key"},
    trails::Habit{Act::changePermission, 2, "grant or withdraw the permission"},
    trails::Habit{Act::requestPermission, 2, "ask for the permission"},
    trails::Habit{Act::turnToProgram, 1, "turn to the program"},
    trails::Habit{Act::changeReduceMotion, 1, "switch reduced motion"},
    trails::Habit{Act::changeScreens, 2, "change the displays"},
    trails::Habit{Act::reportTrack, 10, "report what plays"},
    trails::Habit{Act::endAdapter, 2, "end the adapter"},
    trails::Habit{Act::answerScripts, 4, "have players answer otherwise"},
    trails::Habit{Act::hangScripts, 2, "let scripts hang or run"},
    trails::Habit{Act::turnVolume, 4, "turn the volume"},
    trails::Habit{Act::commandMedia, 5, "press a button of the player"},
    trails::Habit{Act::jumpClock, 1, "set the clock"},
    trails::Habit{Act::stopOrStart, 1, "stop or start"},
    trails::Habit{Act::relaunch, 1, "launch again"},
};

} // namespace

const std::span<const trails::Habit<Act>> habits = table;

} // namespace brindle::simulation
