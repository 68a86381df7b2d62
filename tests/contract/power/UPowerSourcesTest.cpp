#include "contract/power/UPowerWorld.h"
#include "support/EventLoop.h"

#include <gmock/gmock.h>

namespace brindle::test {

namespace {

using namespace Qt::StringLiterals;

/// The daemon's own habits, and its bad ones.
class UPowerSourcesTest : public testing::Test
{
protected:
    void listen()
    {
        subscription = world.port().notify([this] { ++changes; });
    }

    QVariant battery(const QString &key) { return internalBattery(world.port()).value(key); }
    bool isOnMains() { return battery(PowerSourceKey::powerSourceState) == PowerSourceValue::acPower; }

    UPowerWorld world;
    int changes = 0;
    Subscription subscription;
};

} // namespace

TEST_F(UPowerSourcesTest, ADaemonThatWasThereFirstIsRead)
{
    world.startDaemon(true);
    world.addBattery(64, true);
    listen();
    EXPECT_TRUE(eventually([this] {
        world.time.advance(UPowerSources::settlingTime);
        return world.port().sources().has_value();
    }));
    EXPECT_EQ(battery(PowerSourceKey::currentCapacity), 64);
    EXPECT_EQ(changes, 1);
}

TEST_F(UPowerSourcesTest, ManySignalsOfOneEventAreOneChange)
{
    listen();
    world.comeUp(80, true, true);
    changes = 0;
    // The script sends one signal for each.
    world.setDevice({{u"State"_s, 2U}, {u"Percentage"_s, 79.0}, {u"TimeToEmpty"_s, qlonglong(900)}});
    world.setMains(false);
    world.settle();
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(battery(PowerSourceKey::currentCapacity), 79);
    EXPECT_EQ(battery(PowerSourceKey::isCharging), false);
    EXPECT_FALSE(isOnMains());
}

TEST_F(UPowerSourcesTest, WhatThePortDoesNotTellIsNoChange)
{
    listen();
    world.comeUp(80, true, true);
    changes = 0;
    world.setDevice({{u"TimeToFull"_s, qlonglong(900)}, {u"EnergyRate"_s, 11.5}});
    world.settle();
    EXPECT_EQ(changes, 0);
}

TEST_F(UPowerSourcesTest, NothingIsKnownWhileTheDaemonIsGone)
{
    listen();
    world.comeUp(80, true, true);
    changes = 0;
    world.killDaemon();
    EXPECT_FALSE(world.port().sources());
    EXPECT_EQ(changes, 0);
}

TEST_F(UPowerSourcesTest, ARestartedDaemonIsReadAgain)
{
    listen();
    world.comeUp(80, true, true);
    world.killDaemon();
    changes = 0;
    world.comeUp(70, false, false);
    EXPECT_EQ(battery(PowerSourceKey::currentCapacity), 70);
    EXPECT_FALSE(isOnMains());
    EXPECT_GE(changes, 1);
    world.setMains(true);
    world.settle();
    EXPECT_TRUE(isOnMains());
}

TEST_F(UPowerSourcesTest, ADaemonThatComesAndGoesTenTimesIsStillFollowed)
{
    listen();
    for (int percentage = 50; percentage < 60; ++percentage) {
        world.comeUp(percentage, true, true);
        EXPECT_EQ(battery(PowerSourceKey::currentCapacity), percentage);
        world.killDaemon();
        EXPECT_FALSE(world.port().sources());
    }
}

TEST_F(UPowerSourcesTest, AHungDaemonHoldsNothingUpAndIsReadWhenItWakes)
{
    world.startDaemon(true);
    world.addBattery(64, true);
    world.daemon().freeze();
    listen();
    world.settle();
    EXPECT_FALSE(world.port().sources());
    world.daemon().thaw();
    EXPECT_TRUE(eventually([this] {
        world.time.advance(UPowerSources::settlingTime);
        return world.port().sources().has_value();
    }));
}

TEST_F(UPowerSourcesTest, WhatAHungDaemonSaidBeforeStands)
{
    listen();
    world.comeUp(80, true, true);
    world.daemon().freeze();
    world.settle();
    EXPECT_EQ(battery(PowerSourceKey::currentCapacity), 80);
    world.killDaemon();
    EXPECT_FALSE(world.port().sources());
}

TEST_F(UPowerSourcesTest, ValuesOfWrongTypesLeaveWhatWasKnownOfTheMachine)
{
    listen();
    world.comeUp(80, true, true);
    world.setMachine({{u"OnBattery"_s, u"perhaps"_s}});
    world.setDevice({{u"Percentage"_s, u"eighty"_s}, {u"State"_s, QStringList{u"full"_s}}});
    world.settle();
    EXPECT_TRUE(isOnMains());
    EXPECT_FALSE(battery(PowerSourceKey::currentCapacity).isValid());
    EXPECT_FALSE(battery(PowerSourceKey::isCharging).isValid());
}

TEST_F(UPowerSourcesTest, MessagesOfAWrongShapeAreIgnored)
{
    listen();
    world.comeUp(80, true, true);
    changes = 0;
    const auto emitSignal = [this](const QString &interface, const QString &name, const QString &signature,
                                const QVariantList &arguments) {
        world.daemon().script(
            u"/org/freedesktop/UPower"_s, u"EmitSignal"_s, {interface, name, signature, QVariant(arguments)});
    };
    emitSignal(u"org.freedesktop.UPower"_s, u"DeviceAdded"_s, u"s"_s, {u"not a path"_s});
    emitSignal(u"org.freedesktop.UPower"_s, u"DeviceRemoved"_s, u"i"_s, {7});
    emitSignal(u"org.freedesktop.UPower"_s, u"DeviceRemoved"_s, u"s"_s, {u"/nobody"_s});
    emitSignal(u"org.freedesktop.DBus.Properties"_s, u"PropertiesChanged"_s, u"s"_s, {u"x"_s});
    world.settle();
    EXPECT_EQ(changes, 0);
    EXPECT_EQ(battery(PowerSourceKey::currentCapacity), 80);
}

TEST_F(UPowerSourcesTest, AnotherProgramCannotSpeakForTheDaemon)
{
    listen();
    world.comeUp(80, true, true);
    changes = 0;
    QDBusMessage lie = QDBusMessage::createSignal(
        u"/org/freedesktop/UPower"_s, u"org.freedesktop.DBus.Properties"_s, u"PropertiesChanged"_s);
    lie << u"org.freedesktop.UPower"_s << QVariantMap{{u"OnBattery"_s, true}} << QStringList();
    world.bus.control().send(lie);
    world.settle();
    EXPECT_EQ(changes, 0);
    EXPECT_TRUE(isOnMains());
}

TEST_F(UPowerSourcesTest, AThousandDevicesAreRead)
{
    world.startDaemon(true);
    world.addBattery(64, true);
    world.daemon().script(u"/org/freedesktop/UPower"_s, u"AddMethod"_s,
        {u"org.freedesktop.UPower"_s, u"EnumerateDevices"_s, QString(), u"ao"_s,
            u"ret = ['/org/freedesktop/UPower/devices/battery_BAT0'] + ['/d%i' % i for i in range(1000)]"_s});
    listen();
    EXPECT_TRUE(eventually([this] {
        world.time.advance(UPowerSources::settlingTime);
        return world.port().sources().has_value();
    }));
    EXPECT_EQ(battery(PowerSourceKey::currentCapacity), 64);
}

TEST_F(UPowerSourcesTest, ADeviceThatTellsNothingIsASourceOfWhichNothingIsKnown)
{
    world.startDaemon(true);
    world.daemon().script(u"/org/freedesktop/UPower"_s, u"AddMethod"_s,
        {u"org.freedesktop.UPower"_s, u"EnumerateDevices"_s, QString(), u"ao"_s,
            u"ret = ['/nothing/here']"_s});
    listen();
    EXPECT_TRUE(eventually([this] {
        world.time.advance(UPowerSources::settlingTime);
        return world.port().sources().has_value();
    }));
    EXPECT_EQ(world.port().sources(), QList<std::optional<QVariantMap>>{std::nullopt});
}

TEST_F(UPowerSourcesTest, TheBusEndingUnderItLeavesNothingKnown)
{
    listen();
    world.comeUp(80, true, true);
    world.bus.end();
    EXPECT_TRUE(eventually([this] { return !world.port().sources(); }));
}

TEST(UPowerSourcesWithoutABus, NothingIsKnownAndNothingFails)
{
    SystemScheduler time;
    BusConnection nowhere{BusConnection::busAt(u"unix:path=/nowhere"_s), time};
    UPowerSources sources{nowhere, time};
    const Subscription subscription = sources.notify([] { FAIL(); });
    EXPECT_FALSE(nowhere.waitForConnection(10));
    deliverEvents();
    EXPECT_FALSE(sources.sources());
}

} // namespace brindle::test
