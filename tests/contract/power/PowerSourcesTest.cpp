#include "contract/power/PowerWorld.h"
#include "contract/power/UPowerWorld.h"

#include <gmock/gmock.h>

namespace brindle::test {

/// What the port promises, whoever keeps it.
template <typename World> class PowerSourcesContract : public testing::Test
{
protected:
    void listen()
    {
        subscription = world.port().notify([this] { ++changes; });
    }

    World world;
    int changes = 0;
    Subscription subscription;
};

using Worlds = testing::Types<FakePowerWorld, UPowerWorld>;
TYPED_TEST_SUITE(PowerSourcesContract, Worlds);

TYPED_TEST(PowerSourcesContract, NothingIsKnownBeforeTheSystemHasAnswered)
{
    this->listen();
    this->world.settle();
    EXPECT_FALSE(this->world.port().sources());
    EXPECT_EQ(this->changes, 0);
}

TYPED_TEST(PowerSourcesContract, TheFirstAnswerIsAChange)
{
    this->listen();
    this->world.comeUp(80, true, true);
    EXPECT_TRUE(this->world.port().sources());
    EXPECT_GE(this->changes, 1);
}

TYPED_TEST(PowerSourcesContract, ABatteryIsDescribedInThePortsWords)
{
    this->listen();
    this->world.comeUp(80, true, true);
    const QVariantMap expected{
        {PowerSourceKey::type, PowerSourceValue::internalBattery},
        {PowerSourceKey::currentCapacity, 80},
        {PowerSourceKey::maxCapacity, 100},
        {PowerSourceKey::powerSourceState, PowerSourceValue::acPower},
        {PowerSourceKey::isCharging, true},
        {PowerSourceKey::isCharged, false},
    };
    EXPECT_EQ(internalBattery(this->world.port()), expected);
}

TYPED_TEST(PowerSourcesContract, PullingThePlugIsTold)
{
    this->listen();
    this->world.comeUp(80, true, true);
    this->changes = 0;
    this->world.setMains(false);
    this->world.settle();
    EXPECT_EQ(this->changes, 1);
    EXPECT_EQ(internalBattery(this->world.port())[PowerSourceKey::powerSourceState],
        PowerSourceValue::batteryPower);
}

TYPED_TEST(PowerSourcesContract, AChangedLevelIsTold)
{
    this->listen();
    this->world.comeUp(80, false, false);
    this->changes = 0;
    this->world.setPercentage(79);
    this->world.settle();
    EXPECT_EQ(this->changes, 1);
    EXPECT_EQ(internalBattery(this->world.port())[PowerSourceKey::currentCapacity], 79);
}

TYPED_TEST(PowerSourcesContract, AUpsIsNoInternalBattery)
{
    this->listen();
    this->world.comeUp(80, true, true);
    this->world.addUps();
    this->world.takeBatteryOut();
    this->world.settle();
    ASSERT_TRUE(this->world.port().sources());
    ASSERT_EQ(this->world.port().sources()->size(), 1);
    EXPECT_EQ(this->world.port().sources()->at(0)->value(PowerSourceKey::type), PowerSourceValue::ups);
}

TYPED_TEST(PowerSourcesContract, ABatteryTakenOutIsGone)
{
    this->listen();
    this->world.comeUp(80, true, true);
    this->world.takeBatteryOut();
    this->world.settle();
    ASSERT_TRUE(this->world.port().sources());
    EXPECT_TRUE(this->world.port().sources()->isEmpty());
}

TYPED_TEST(PowerSourcesContract, AnEndedSubscriptionHearsNothing)
{
    this->listen();
    this->world.comeUp(80, true, true);
    this->changes = 0;
    this->subscription.reset();
    this->world.setMains(false);
    this->world.settle();
    EXPECT_EQ(this->changes, 0);
}

} // namespace brindle::test
