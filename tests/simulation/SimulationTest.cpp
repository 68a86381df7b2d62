#include "simulation/Play.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <iostream>

namespace brindle::simulation {
namespace {

/// Events of one day; each day begins with a new machine.
constexpr std::size_t dayLength = 5000;
constexpr std::size_t usualEvents = 120'000;
constexpr std::size_t eventsOfLongRuns = 3'000'000;

TEST(Simulation, RandomDaysKeepEveryPromise)
{
    const std::size_t events = trails::numberFrom("BRINDLE_SIMULATION_EVENTS",
        qEnvironmentVariableIsSet("BRINDLE_LONG") ? eventsOfLongRuns : usualEvents);
    std::uint64_t seed = trails::numberFrom("BRINDLE_SIMULATION_SEED", 1);
    for (std::size_t done = 0; done < events; done += dayLength, ++seed) {
        // Told beforehand, for a day that never ends.
        std::cout << "the day with seed " << seed << std::endl;
        const Trail day = makeDay(seed, std::min(dayLength, events - done));
        if (const auto failure = play(day))
            FAIL() << trails::report(seed, day, *failure, play, habits);
    }
}

TEST(Simulation, TheSameSeedGivesTheSameDay)
{
    const auto describeDay = [](std::uint64_t seed) {
        QString text;
        for (const Event &event : makeDay(seed, 200))
            text += trails::describe(event, habits);
        return text;
    };
    EXPECT_EQ(describeDay(7), describeDay(7));
    EXPECT_NE(describeDay(7), describeDay(8));
}

TEST(Simulation, AFailingTrailIsShortenedToWhatItNeeds)
{
    // Fails when a toggle comes after two scrolls.
    const auto fails = [](const Trail &trail) {
        int scrolls = 0;
        for (const Event &event : trail) {
            if (event.act == Act::toggle && scrolls >= 2)
                return true;
            scrolls += event.act == Act::scroll ? 1 : 0;
        }
        return false;
    };
    Trail day = makeDay(3, 1000);
    ASSERT_TRUE(fails(day));
    const Trail shortest = trails::shorten<Act>(day, fails);
    ASSERT_EQ(shortest.size(), 3U);
    EXPECT_EQ(shortest[0].act, Act::scroll);
    EXPECT_EQ(shortest[1].act, Act::scroll);
    EXPECT_EQ(shortest[2].act, Act::toggle);
    EXPECT_EQ(shortest[2].pause, 0);
}

} // namespace
} // namespace brindle::simulation
