#include "foundation/Listeners.h"

#include <gmock/gmock.h>
#include <optional>
#include <vector>

namespace brindle {
namespace {

using testing::ElementsAre;

class ListenersTest : public testing::Test
{
protected:
    [[nodiscard]] Subscription note(int name)
    {
        return listeners.add([this, name](int value) { heard.push_back(10 * name + value); });
    }

    Listeners<int> listeners;
    std::vector<int> heard;
};

TEST_F(ListenersTest, AreCalledInTheOrderOfTheirRegistration)
{
    const Subscription first = note(1);
    const Subscription second = note(2);
    listeners.call(5);
    EXPECT_THAT(heard, ElementsAre(15, 25));
}

TEST_F(ListenersTest, AnEndedOneIsNotCalled)
{
    Subscription first = note(1);
    const Subscription second = note(2);
    first.reset();
    listeners.call(5);
    EXPECT_THAT(heard, ElementsAre(25));
}

TEST_F(ListenersTest, OneMayEndItselfAndTheNext)
{
    Subscription second;
    Subscription first = listeners.add([&](int) {
        first.reset();
        second.reset();
    });
    second = note(2);
    listeners.call(5);
    EXPECT_THAT(heard, ElementsAre());
    EXPECT_TRUE(listeners.isEmpty());
}

TEST_F(ListenersTest, OneThatIsAddedMeanwhileWaitsForTheNextCall)
{
    Subscription added;
    const Subscription first = listeners.add([&](int) {
        if (!added)
            added = note(3);
    });
    listeners.call(5);
    EXPECT_THAT(heard, ElementsAre());
    listeners.call(6);
    EXPECT_THAT(heard, ElementsAre(36));
}

TEST_F(ListenersTest, EachEndIsToldOnceItHasHappened)
{
    int ends = 0;
    bool wasLast = false;
    Listeners<> told{[&] { ++ends; }};
    Listeners<> last{[&] { wasLast = last.isEmpty(); }};
    {
        const Subscription one = told.add([] { });
        const Subscription other = told.add([] { });
        const Subscription only = last.add([] { });
    }
    EXPECT_EQ(ends, 2);
    EXPECT_TRUE(wasLast);
}

TEST_F(ListenersTest, ARegistrationMayOutliveThem)
{
    int ends = 0;
    std::optional<Listeners<>> gone{std::in_place, [&] { ++ends; }};
    Subscription registration = gone->add([] { });
    gone.reset();
    registration.reset();
    EXPECT_EQ(ends, 0);
}

TEST_F(ListenersTest, OneMayBeTheEndOfAllOfThem)
{
    int ends = 0;
    std::optional<Listeners<>> gone{std::in_place, [&] { ++ends; }};
    Subscription first = gone->add([&] {
        gone.reset();
        first.reset();
    });
    bool wasCalled = false;
    const Subscription second = gone->add([&] { wasCalled = true; });
    gone->call();
    EXPECT_FALSE(wasCalled);
    EXPECT_EQ(ends, 0);
}

} // namespace
} // namespace brindle
