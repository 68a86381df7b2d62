#include "activities/BatteryMonitor.h"

#include "activities/ActivityCoordinator.h"
#include "foundation/ManualScheduler.h"
#include "platform/fake/FakePowerSources.h"

#include <QSignalSpy>

#include <gmock/gmock.h>

namespace brindle {
namespace {

QVariantMap battery(int capacity, bool onMains, bool isCharging = false, bool isCharged = false)
{
    return FakePowerSources::battery(capacity, onMains, isCharging, isCharged);
}

class Battery : public testing::Test
{
protected:
    using Sources = QList<std::optional<QVariantMap>>;

    /// Brings the battery to the state, and the news of it to the monitor.
    void becomes(const QVariantMap &description)
    {
        power.set(Sources{description});
        time.runPosted();
    }
    static QVariantMap without(QVariantMap description, const QString &key)
    {
        description.remove(key);
        return description;
    }
    static QVariantMap with(QVariantMap description, const QString &key, const QVariant &value)
    {
        description.insert(key, value);
        return description;
    }
    const std::optional<SystemActivity> &posted() const { return coordinator.current(); }

    ManualScheduler time;
    ActivityCoordinator coordinator{time};
    FakePowerSources power;
    BatteryMonitor monitor{coordinator, power, time};
};

TEST_F(Battery, TheFirstReadingPostsNothingAndUnpluggingPosts)
{
    power.set(Sources{battery(80, true)});
    monitor.start();
    EXPECT_TRUE(monitor.isACConnected());
    EXPECT_EQ(posted(), std::nullopt);

    time.advance(5);
    becomes(battery(79, false));
    ASSERT_TRUE(posted());
    EXPECT_EQ(posted()->type, ActivityType::charging);
    EXPECT_EQ(posted()->priority, ActivityPriority::charging);
    EXPECT_EQ(posted()->duration, 4);
    EXPECT_EQ(posted()->createdAt, time.now());
    EXPECT_FALSE(posted()->id.isNull());
    EXPECT_EQ(posted()->content,
        (ActivityContent{QStringLiteral("On Battery"), QStringLiteral("79%"),
            QStringLiteral("battery.75percent"), std::nullopt}));
}

TEST_F(Battery, PluggingInPostsCharging)
{
    power.set(Sources{battery(20, false)});
    monitor.start();
    becomes(battery(20, true));
    ASSERT_TRUE(posted());
    EXPECT_EQ(posted()->content,
        (ActivityContent{QStringLiteral("Charging"), QStringLiteral("20%"),
            QStringLiteral("battery.100percent.bolt"), std::nullopt}));
}

TEST_F(Battery, EachChangeOfTheMainsHasAnIdentityOfItsOwn)
{
    power.set(Sources{battery(20, false)});
    monitor.start();
    becomes(battery(20, true));
    const QUuid first = posted()->id;
    becomes(battery(20, false));
    EXPECT_NE(posted()->id, first);
}

TEST_F(Battery, AnUnchangedMainsStatePostsNothingWhateverElseChanged)
{
    power.set(Sources{battery(50, true)});
    monitor.start();
    becomes(battery(60, true, true));
    becomes(battery(100, true, false, true));
    becomes(battery(1, true));
    EXPECT_EQ(posted(), std::nullopt);
    EXPECT_EQ(monitor.percentage(), 1);
}

TEST_F(Battery, TheTitleFollowsTheMainsAndNotTheChargingFlag)
{
    power.set(Sources{battery(80, false)});
    monitor.start();
    becomes(battery(80, true, false));
    EXPECT_EQ(posted()->content.title, u"Charging");
}

TEST_F(Battery, AMaximumOfNothingCountsAsOne)
{
    for (const int maximum : {0, -3}) {
        power.set(Sources{with(battery(2, true), PowerSourceKey::maxCapacity, maximum)});
        monitor.refresh();
        EXPECT_EQ(monitor.percentage(), 200) << maximum;
    }
}

TEST_F(Battery, WithoutAMaximumTheCapacityIsThePercentage)
{
    power.set(Sources{without(battery(73, true), PowerSourceKey::maxCapacity)});
    monitor.refresh();
    EXPECT_EQ(monitor.percentage(), 73);
}

TEST_F(Battery, ThePercentageIsRoundedHalvesUpwardsAndNotLimited)
{
    const auto percentage = [&](int capacity, int maximum) {
        power.set(Sources{with(battery(capacity, true), PowerSourceKey::maxCapacity, maximum)});
        monitor.refresh();
        return monitor.percentage();
    };
    EXPECT_EQ(percentage(1, 200), 1);
    EXPECT_EQ(percentage(1, 201), 0);
    EXPECT_EQ(percentage(2, 3), 67);
    EXPECT_EQ(percentage(-1, 200), -1);
    EXPECT_EQ(percentage(105, 100), 105);
}

TEST_F(Battery, OnlyTheInternalBatteryIsRead)
{
    const auto ups = with(battery(10, false), PowerSourceKey::type, PowerSourceValue::ups);
    power.set(Sources{std::nullopt, ups, battery(55, true), battery(99, false)});
    monitor.start();
    EXPECT_EQ(monitor.percentage(), 55);
    EXPECT_TRUE(monitor.isACConnected());
}

TEST_F(Battery, WithoutABatteryNothingIsEverPosted)
{
    const auto ups = with(battery(10, true), PowerSourceKey::type, PowerSourceValue::ups);
    power.set(Sources{ups});
    monitor.start();
    becomes(with(ups, PowerSourceKey::powerSourceState, PowerSourceValue::batteryPower));
    EXPECT_EQ(posted(), std::nullopt);
    EXPECT_EQ(monitor.percentage(), 0);
    EXPECT_FALSE(monitor.isACConnected());
}

TEST_F(Battery, AReadingThatFailsChangesNothing)
{
    power.set(Sources{battery(80, true, true)});
    monitor.start();
    power.set(std::nullopt);
    time.runPosted();
    power.set(Sources{});
    time.runPosted();
    EXPECT_EQ(monitor.percentage(), 80);
    EXPECT_TRUE(monitor.isCharging());
    EXPECT_TRUE(monitor.isACConnected());
    EXPECT_EQ(posted(), std::nullopt);
}

TEST_F(Battery, ValuesOfAWrongTypeReadAsMissing)
{
    QVariantMap odd = battery(80, true, true, true);
    odd[PowerSourceKey::currentCapacity] = QStringLiteral("80");
    odd[PowerSourceKey::maxCapacity] = QStringLiteral("5");
    odd[PowerSourceKey::powerSourceState] = 1;
    odd[PowerSourceKey::isCharging] = 1;
    odd[PowerSourceKey::isCharged] = QStringLiteral("true");
    power.set(Sources{odd});
    monitor.refresh();
    EXPECT_EQ(monitor.percentage(), 0);
    EXPECT_FALSE(monitor.isACConnected());
    EXPECT_FALSE(monitor.isCharging());
    EXPECT_FALSE(monitor.isFullyCharged());
}

TEST_F(Battery, TheNewsIsReadOneTurnLater)
{
    power.set(Sources{battery(80, true)});
    monitor.start();
    power.set(Sources{battery(70, true)});
    EXPECT_EQ(monitor.percentage(), 80);
    time.runPosted();
    EXPECT_EQ(monitor.percentage(), 70);
}

TEST_F(Battery, WithoutNotificationsTheFirstReadingStays)
{
    power.refusesNotification = true;
    power.set(Sources{battery(80, true)});
    monitor.start();
    EXPECT_FALSE(monitor.isObserving());
    becomes(battery(10, false));
    EXPECT_EQ(monitor.percentage(), 80);
}

TEST_F(Battery, AStoppedMonitorHearsNothingAndARestartComparesWithTheOldState)
{
    power.set(Sources{battery(80, true)});
    monitor.start();
    monitor.stop();
    EXPECT_FALSE(power.isObserved());
    becomes(battery(70, false));
    EXPECT_EQ(monitor.percentage(), 80);
    EXPECT_EQ(posted(), std::nullopt);
    monitor.start();
    EXPECT_EQ(posted()->content.title, u"On Battery");
}

TEST_F(Battery, ObserversHearOfAReadingOnlyWhenSomethingChanged)
{
    power.set(Sources{battery(80, true)});
    monitor.start();
    QSignalSpy changes(&monitor, &BatteryMonitor::changed);
    power.announce();
    time.runPosted();
    EXPECT_EQ(changes.count(), 0);
    becomes(battery(81, true, true));
    EXPECT_EQ(changes.count(), 1);
}

TEST_F(Battery, NewsThatComesAfterTheMonitorIsGoneFindsNobody)
{
    auto gone = std::make_unique<BatteryMonitor>(coordinator, power, time);
    power.set(Sources{battery(80, true)});
    gone->start();
    power.announce();
    gone.reset();
    time.runPosted();
    EXPECT_FALSE(power.isObserved());
}

} // namespace
} // namespace brindle
