#include "simulation/Trail.h"

#include <array>
#include <random>

namespace brindle::simulation {

namespace {

struct Habit
{
    Act act;
    /// How often it happens, against the sum of all.
    unsigned weight;
    const char *name;
};

constexpr std::array habits{
    Habit{Act::movePointer, 34, "move the pointer"},
    Habit{Act::pressButton, 3, "press the button"},
    Habit{Act::releaseButton, 5, "release the button"},
    Habit{Act::pickUpDrag, 5, "pick up a drag elsewhere"},
    Habit{Act::staleDrag, 2, "report a drag that is over"},
    Habit{Act::tap, 3, "tap the island"},
    Habit{Act::clickElsewhere, 4, "click elsewhere"},
    Habit{Act::toggle, 4, "toggle"},
    Habit{Act::pressKey, 6, "press a key"},
    Habit{Act::scroll, 5, "scroll"},
    Habit{Act::beginInteraction, 4, "begin an interaction"},
    Habit{Act::endInteraction, 5, "end an interaction"},
    Habit{Act::layOutZones, 3, "lay out the drop zones"},
    Habit{Act::changeSetting, 6, "change a setting"},
    Habit{Act::postActivity, 10, "post an activity"},
    Habit{Act::changePower, 4, "change the power"},
    Habit{Act::changeBluetooth, 4, "connect or disconnect a device"},
    Habit{Act::changeReduceMotion, 1, "switch reduced motion"},
    Habit{Act::changeScreens, 2, "change the displays"},
    Habit{Act::jumpClock, 1, "set the clock"},
    Habit{Act::stopOrStart, 1, "stop or start"},
    Habit{Act::relaunch, 1, "launch again"},
};

// The library's distributions differ between its makers; a trail must not.
class Chance
{
public:
    explicit Chance(std::uint64_t seed) : m_engine(seed) { }

    double fraction() { return double(m_engine() >> 11) * 0x1p-53; }
    unsigned below(unsigned count) { return unsigned(m_engine() % count); }

private:
    std::mt19937_64 m_engine;
};

Act chooseAct(Chance &chance)
{
    unsigned sum = 0;
    for (const Habit &habit : habits)
        sum += habit.weight;
    unsigned rest = chance.below(sum);
    for (const Habit &habit : habits) {
        if (rest < habit.weight)
            return habit.act;
        rest -= habit.weight;
    }
    return Act::movePointer;
}

/// Mostly a moment, often none, seldom long enough for everything to come to rest.
double choosePause(Chance &chance)
{
    switch (chance.below(10)) {
    case 0:
    case 1:
    case 2:
        return 0;
    case 9:
        return chance.fraction() * 12;
    default:
        return chance.fraction() * 0.3;
    }
}

} // namespace

Trail makeDay(std::uint64_t seed, std::size_t count)
{
    Chance chance{seed};
    Trail day;
    day.reserve(count);
    while (day.size() < count) {
        Event event;
        event.act = chooseAct(chance);
        event.choice = chance.below(1U << 16);
        event.x = chance.fraction();
        event.y = chance.fraction();
        event.endsTurn = chance.below(4) != 0;
        event.pause = choosePause(chance);
        day.push_back(event);
    }
    return day;
}

QString describe(const Event &event)
{
    for (const Habit &habit : habits) {
        if (habit.act == event.act)
            return QStringLiteral("%1 (way %2, %3, %4)%5, then wait %6 s")
                .arg(QLatin1StringView(habit.name))
                .arg(event.choice)
                .arg(event.x, 0, 'g', 17)
                .arg(event.y, 0, 'g', 17)
                .arg(event.endsTurn ? QString() : QStringLiteral(" in the same turn"))
                .arg(event.pause, 0, 'g', 17);
    }
    return {};
}

} // namespace brindle::simulation
