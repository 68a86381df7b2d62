#include "contract/brightness/BrightnessWorld.h"
#include "support/EventLoop.h"

#include <gmock/gmock.h>

namespace brindle::test {

/// What the port promises, whoever keeps it.
template <typename World> class DisplayBrightnessContract : public testing::Test
{
protected:
    void listen()
    {
        subscription = world.port().notify([this] { ++changes; });
    }
    bool comesTo(std::optional<double> brightness)
    {
        return eventually([this, brightness] { return world.port().brightness() == brightness; });
    }
    bool isTold()
    {
        return eventually([this] { return changes > 0; });
    }

    World world;
    int changes = 0;
    Subscription subscription;
};

using Worlds = testing::Types<FakeBrightnessWorld, BacklightFolder>;
TYPED_TEST_SUITE(DisplayBrightnessContract, Worlds);

TYPED_TEST(DisplayBrightnessContract, NothingIsKnownWithoutADisplay)
{
    EXPECT_FALSE(this->world.port().brightness());
    this->listen();
    EXPECT_FALSE(this->world.port().brightness());
    deliverEvents();
    EXPECT_EQ(this->changes, 0);
}

TYPED_TEST(DisplayBrightnessContract, TheBrightnessCanBeReadWithoutARegistration)
{
    this->world.setBrightness(25);
    EXPECT_EQ(this->world.port().brightness(), 0.25);
    this->world.setBrightness(75);
    EXPECT_EQ(this->world.port().brightness(), 0.75);
}

TYPED_TEST(DisplayBrightnessContract, WhatWasThereFirstIsKnownAndIsNoChange)
{
    this->world.setBrightness(25);
    this->listen();
    EXPECT_EQ(this->world.port().brightness(), 0.25);
    deliverEvents();
    EXPECT_EQ(this->changes, 0);
}

TYPED_TEST(DisplayBrightnessContract, AChangeIsTold)
{
    this->world.setBrightness(25);
    this->listen();
    for (const int percent : {50, 0, 100}) {
        this->changes = 0;
        this->world.setBrightness(percent);
        EXPECT_TRUE(this->isTold());
        EXPECT_TRUE(this->comesTo(percent / 100.0));
    }
}

TYPED_TEST(DisplayBrightnessContract, ADisplayThatComesLaterIsFound)
{
    this->listen();
    this->world.setBrightness(25);
    EXPECT_TRUE(this->isTold());
    EXPECT_TRUE(this->comesTo(0.25));
    this->world.setBrightness(30);
    EXPECT_TRUE(this->comesTo(0.3));
}

TYPED_TEST(DisplayBrightnessContract, ADisplayThatGoesLeavesNothingKnown)
{
    this->world.setBrightness(25);
    this->listen();
    this->world.takeDisplayAway();
    EXPECT_TRUE(this->isTold());
    EXPECT_TRUE(this->comesTo(std::nullopt));
    this->world.setBrightness(40);
    EXPECT_TRUE(this->comesTo(0.4));
}

TYPED_TEST(DisplayBrightnessContract, AnEndedRegistrationHearsNothing)
{
    this->world.setBrightness(25);
    this->listen();
    int others = 0;
    const Subscription other = this->world.port().notify([&others] { ++others; });
    this->subscription.reset();
    this->world.setBrightness(30);
    EXPECT_TRUE(eventually([&others] { return others > 0; }));
    EXPECT_EQ(this->changes, 0);
}

} // namespace brindle::test
