#include "activities/BluetoothMonitor.h"

#include "activities/ActivityCoordinator.h"
#include "foundation/ManualScheduler.h"
#include "platform/fake/FakeBluetoothDevices.h"

#include <gmock/gmock.h>

namespace brindle {
namespace {

const QString address = QStringLiteral("00:11:22:33:44:55");

class Bluetooth : public testing::Test
{
protected:
    void SetUp() override { monitor.start(); }

    static BluetoothDevice device(const QString &name) { return {name, address}; }
    const std::optional<SystemActivity> &posted() const { return coordinator.current(); }

    ManualScheduler time;
    ActivityCoordinator coordinator{time};
    FakeBluetoothDevices devices;
    BluetoothMonitor monitor{coordinator, devices, time};
};

TEST_F(Bluetooth, ADeviceThatConnectsIsAnnounced)
{
    devices.connectDevice(device(QStringLiteral("Living Room Speaker")));
    ASSERT_TRUE(posted());
    EXPECT_EQ(posted()->type, ActivityType::peripheral);
    EXPECT_EQ(posted()->priority, ActivityPriority::peripheral);
    EXPECT_EQ(posted()->duration, 4);
    EXPECT_EQ(posted()->createdAt, time.now());
    EXPECT_EQ(posted()->content,
        (ActivityContent{QStringLiteral("Living Room Speaker"), QStringLiteral("Connected"),
            QStringLiteral("dot.radiowaves.left.and.right"), std::nullopt}));
    EXPECT_THAT(monitor.watchedDevices(), testing::ElementsAre(address));
}

TEST_F(Bluetooth, ADeviceThatDisconnectsIsAnnouncedMoreBriefly)
{
    const BluetoothDevice mouse = device(QStringLiteral("Travel Mouse"));
    devices.connectDevice(mouse);
    const QUuid connected = posted()->id;
    devices.disconnectDevice(mouse);
    ASSERT_TRUE(posted());
    EXPECT_NE(posted()->id, connected);
    EXPECT_EQ(posted()->duration, 3.5);
    EXPECT_EQ(posted()->content,
        (ActivityContent{QStringLiteral("Travel Mouse"), QStringLiteral("Disconnected"),
            QStringLiteral("computermouse.fill"), std::nullopt}));
    EXPECT_THAT(monitor.watchedDevices(), testing::IsEmpty());
    EXPECT_EQ(devices.disconnectRegistrations(), 0);
}

TEST_F(Bluetooth, AnIPhoneInAnyCaseOfLettersProducesNothing)
{
    for (const auto &name : {QStringLiteral("iPhone"), QStringLiteral("My IPHONE 15"),
             QStringLiteral("iphone"), QStringLiteral("the iPhOnE's headphone")}) {
        devices.connectDevice(device(name));
        devices.disconnectDevice(device(name));
        EXPECT_EQ(posted(), std::nullopt) << name.toStdString();
        EXPECT_EQ(devices.disconnectRegistrations(), 0);
    }
}

TEST_F(Bluetooth, ADeviceWithoutANameHasATitleAndASymbolAllTheSame)
{
    devices.connectDevice({std::nullopt, address});
    EXPECT_EQ(posted()->content.title, u"Bluetooth Device");
    EXPECT_EQ(posted()->content.symbol, u"dot.radiowaves.left.and.right");
}

TEST_F(Bluetooth, AHeadsetIsRecognizedBeforeAMouse)
{
    EXPECT_EQ(BluetoothMonitor::symbolFor(QStringLiteral("Mouse and Headphone Set")), u"airpodspro");
}

struct Kind
{
    const char *name;
    const char *symbol;
};

class BluetoothSymbols : public testing::TestWithParam<Kind>
{
};

TEST_P(BluetoothSymbols, FollowTheName)
{
    EXPECT_EQ(BluetoothMonitor::symbolFor(QString::fromLatin1(GetParam().name)),
        QString::fromLatin1(GetParam().symbol));
}

INSTANTIATE_TEST_SUITE_P(Names, BluetoothSymbols,
    testing::Values(Kind{"Anna's AirPods Pro", "airpodspro"}, Kind{"HEADPHONES", "airpodspro"},
        Kind{"Tiny Buds 2", "airpodspro"}, Kind{"Magic Mouse", "computermouse.fill"},
        Kind{"Keyboard K380", "keyboard.fill"}, Kind{"Mouse Keyboard", "computermouse.fill"},
        Kind{"", "dot.radiowaves.left.and.right"}, Kind{"Speaker", "dot.radiowaves.left.and.right"}));

TEST_F(Bluetooth, ConnectingAgainReplacesTheWatchWithoutEndingTheOlderOne)
{
    const BluetoothDevice mouse = device(QStringLiteral("Mouse"));
    devices.connectDevice(mouse);
    devices.connectDevice(mouse);
    EXPECT_EQ(monitor.watchedDevices().size(), 1);
    EXPECT_EQ(devices.disconnectRegistrations(), 2);
}

TEST_F(Bluetooth, ADeviceThatCannotBeWatchedIsAnnouncedAllTheSame)
{
    devices.refusesDisconnectNotifications = true;
    devices.connectDevice(device(QStringLiteral("Mouse")));
    EXPECT_EQ(posted()->content.detail, QStringLiteral("Connected"));
    EXPECT_THAT(monitor.watchedDevices(), testing::IsEmpty());
}

TEST_F(Bluetooth, ADeviceWithoutAnAddressIsWatchedUntilTheStop)
{
    const BluetoothDevice nameless{QStringLiteral("Mouse"), std::nullopt};
    devices.connectDevice(nameless);
    ASSERT_EQ(monitor.watchedDevices().size(), 1);
    EXPECT_EQ(QUuid::fromString(monitor.watchedDevices().constFirst()).isNull(), false);
    devices.disconnectDevice(nameless);
    EXPECT_EQ(posted()->content.detail, QStringLiteral("Disconnected"));
    EXPECT_EQ(monitor.watchedDevices().size(), 1);
    monitor.stop();
    EXPECT_EQ(devices.disconnectRegistrations(), 0);
}

TEST_F(Bluetooth, AStoppedMonitorWatchesNothing)
{
    devices.connectDevice(device(QStringLiteral("Mouse")));
    monitor.stop();
    EXPECT_FALSE(monitor.isObserving());
    EXPECT_EQ(devices.connectRegistrations(), 0);
    EXPECT_EQ(devices.disconnectRegistrations(), 0);
    EXPECT_THAT(monitor.watchedDevices(), testing::IsEmpty());
    monitor.stop();
}

TEST_F(Bluetooth, ASecondStartReplacesTheRegistration)
{
    monitor.start();
    EXPECT_EQ(devices.connectRegistrations(), 1);
}

TEST_F(Bluetooth, TheEndOfTheMonitorEndsItsRegistrations)
{
    {
        BluetoothMonitor brief{coordinator, devices, time};
        brief.start();
        devices.connectDevice(device(QStringLiteral("Mouse")));
    }
    EXPECT_EQ(devices.connectRegistrations(), 1);
    devices.disconnectDevice(device(QStringLiteral("Mouse")));
}

} // namespace
} // namespace brindle
