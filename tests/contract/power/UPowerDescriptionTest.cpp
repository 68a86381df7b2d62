#include "platform/linux/dbus/UPowerDescription.h"

#include "platform/PowerSources.h"

#include <gmock/gmock.h>
#include <limits>

namespace brindle::test {

namespace {

using namespace Qt::StringLiterals;

QVariantMap laptopBattery(const QVariantMap &changes = {})
{
    QVariantMap device{{u"Type"_s, 2U}, {u"PowerSupply"_s, true}, {u"IsPresent"_s, true}, {u"State"_s, 2U},
        {u"Percentage"_s, 50.0}};
    device.insert(changes);
    return device;
}

QVariant described(const QVariantMap &device, const QString &key)
{
    return describePowerSource(device, true).value_or(QVariantMap()).value(key);
}

} // namespace

TEST(UPowerDescription, OnlyABatteryThatSuppliesTheMachineIsInternal)
{
    EXPECT_EQ(described(laptopBattery(), PowerSourceKey::type), PowerSourceValue::internalBattery);
    EXPECT_EQ(
        described(laptopBattery({{u"PowerSupply"_s, false}}), PowerSourceKey::type), u"Accessory Source"_s);
    EXPECT_EQ(described({{u"Type"_s, 3U}}, PowerSourceKey::type), PowerSourceValue::ups);
    EXPECT_EQ(described({{u"Type"_s, 1U}}, PowerSourceKey::type), u"Line Power"_s);
    EXPECT_EQ(described({{u"Type"_s, 5U}}, PowerSourceKey::type), u"Accessory Source"_s);
    EXPECT_EQ(described({{u"Type"_s, 4000000000U}}, PowerSourceKey::type), u"Accessory Source"_s);
}

TEST(UPowerDescription, AnEmptyBatteryBayIsNoSource)
{
    EXPECT_FALSE(describePowerSource(laptopBattery({{u"IsPresent"_s, false}}), true));
}

TEST(UPowerDescription, TheLevelIsRoundedToWholePerCent)
{
    EXPECT_EQ(described(laptopBattery({{u"Percentage"_s, 49.5}}), PowerSourceKey::currentCapacity), 50);
    EXPECT_EQ(described(laptopBattery({{u"Percentage"_s, 49.4}}), PowerSourceKey::currentCapacity), 49);
    EXPECT_EQ(described(laptopBattery(), PowerSourceKey::maxCapacity), 100);
}

TEST(UPowerDescription, ALevelOutsideItsRangeIsHeldToIt)
{
    EXPECT_EQ(described(laptopBattery({{u"Percentage"_s, 1e300}}), PowerSourceKey::currentCapacity), 100);
    EXPECT_EQ(described(laptopBattery({{u"Percentage"_s, -7.0}}), PowerSourceKey::currentCapacity), 0);
}

TEST(UPowerDescription, ALevelThatIsNoNumberIsLeftOut)
{
    for (const double value :
        {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity()})
        EXPECT_FALSE(
            described(laptopBattery({{u"Percentage"_s, value}}), PowerSourceKey::currentCapacity).isValid());
}

TEST(UPowerDescription, ChargingAndChargedFollowTheState)
{
    const auto charging = [](uint state) {
        return described(laptopBattery({{u"State"_s, state}}), PowerSourceKey::isCharging).toBool();
    };
    const auto charged = [](uint state) {
        return described(laptopBattery({{u"State"_s, state}}), PowerSourceKey::isCharged).toBool();
    };
    EXPECT_TRUE(charging(1));
    EXPECT_TRUE(charged(4));
    for (const uint other : {0U, 2U, 3U, 4U, 5U, 6U, 77U})
        EXPECT_FALSE(charging(other)) << other;
    for (const uint other : {0U, 1U, 2U, 3U, 5U, 6U, 77U})
        EXPECT_FALSE(charged(other)) << other;
}

TEST(UPowerDescription, AValueOfAWrongTypeLeavesItsKeyOut)
{
    const QVariantMap nonsense{{u"Type"_s, u"battery"_s}, {u"State"_s, true}, {u"Percentage"_s, u"50"_s},
        {u"PowerSupply"_s, 1}, {u"IsPresent"_s, QStringList()}};
    EXPECT_EQ(describePowerSource(nonsense, std::nullopt), QVariantMap());
}

TEST(UPowerDescription, TheMainsStateIsLeftOutWhenTheMachineDoesNotSay)
{
    const auto description = describePowerSource(laptopBattery(), std::nullopt);
    EXPECT_FALSE(description->contains(PowerSourceKey::powerSourceState));
}

} // namespace brindle::test
