#include "contract/bluetooth/BlueZWorld.h"
#include "platform/linux/dbus/BlueZSession.h"
#include "support/EventLoop.h"

#include <QDBusMetaType>

#include <gmock/gmock.h>

namespace brindle::test {

namespace {

using namespace Qt::StringLiterals;
using testing::ElementsAre;
using testing::IsEmpty;

const QString address = u"AA:BB:CC:DD:EE:01"_s;
const BluetoothDevice headphones{u"My Headphones"_s, address};

/// The daemon's own habits, and its bad ones.
class BlueZDevicesTest : public testing::Test
{
protected:
    void listen()
    {
        world.port().registerForConnectNotifications(
            [this](const BluetoothDevice &device) { connected.append(device); });
        world.port().registerForDisconnectNotification(
            headphones, [this](const BluetoothDevice &device) { disconnected.append(device); });
    }

    void comeUpWithHeadphones()
    {
        world.comeUp();
        world.pair(address, *headphones.name);
        world.settle();
    }

    BlueZWorld world;
    QList<BluetoothDevice> connected;
    QList<BluetoothDevice> disconnected;
};

} // namespace

TEST_F(BlueZDevicesTest, ADeviceConnectedBeforeTheStartIsNoNewsButItsGoingIs)
{
    world.comeUp();
    world.pair(address, *headphones.name);
    world.connectDevice(address);
    listen();
    world.settle();
    EXPECT_THAT(connected, IsEmpty());
    world.disconnectDevice(address);
    world.settle();
    EXPECT_THAT(disconnected, ElementsAre(headphones));
    world.connectDevice(address);
    world.settle();
    EXPECT_THAT(connected, ElementsAre(headphones));
}

TEST_F(BlueZDevicesTest, WithoutADaemonItWaitsForOne)
{
    listen();
    world.settle();
    comeUpWithHeadphones();
    world.connectDevice(address);
    world.settle();
    EXPECT_THAT(connected, ElementsAre(headphones));
}

TEST_F(BlueZDevicesTest, ADeviceThatIsNewAndConnectedAtOnceIsTold)
{
    listen();
    world.comeUp();
    world.settle();
    qDBusRegisterMetaType<bus::Interfaces>();
    const bus::Interfaces interfaces{{u"org.bluez.Device1"_s,
        {{u"Address"_s, address}, {u"Alias"_s, *headphones.name}, {u"Connected"_s, true}}}};
    world.say(u"/"_s, u"org.freedesktop.DBus.ObjectManager"_s, u"InterfacesAdded"_s, u"oa{sa{sv}}"_s,
        {QVariant::fromValue(QDBusObjectPath(BlueZWorld::pathOf(address))), QVariant::fromValue(interfaces)});
    world.settle();
    EXPECT_THAT(connected, ElementsAre(headphones));
}

TEST_F(BlueZDevicesTest, ADeviceForgottenWhileConnectedHasDisconnected)
{
    listen();
    comeUpWithHeadphones();
    world.connectDevice(address);
    world.forget(address);
    world.settle();
    EXPECT_THAT(disconnected, ElementsAre(headphones));
}

TEST_F(BlueZDevicesTest, WhenTheDaemonDiesItsDevicesDisconnect)
{
    listen();
    comeUpWithHeadphones();
    world.connectDevice(address);
    world.settle();
    world.killDaemon();
    EXPECT_THAT(disconnected, ElementsAre(headphones));
}

TEST_F(BlueZDevicesTest, ARestartedDaemonIsFollowed)
{
    listen();
    comeUpWithHeadphones();
    world.connectDevice(address);
    world.settle();
    world.killDaemon();
    comeUpWithHeadphones();
    EXPECT_THAT(connected, ElementsAre(headphones));
    world.connectDevice(address);
    world.settle();
    EXPECT_THAT(connected, ElementsAre(headphones, headphones));
}

TEST_F(BlueZDevicesTest, AHungDaemonHoldsNothingUpAndIsReadWhenItWakes)
{
    comeUpWithHeadphones();
    world.daemon().freeze();
    listen();
    world.settle();
    world.daemon().thaw();
    world.settle();
    world.connectDevice(address);
    world.settle();
    EXPECT_THAT(connected, ElementsAre(headphones));
}

TEST_F(BlueZDevicesTest, AHungDaemonThatIsKilledTakesItsDevicesWithIt)
{
    listen();
    comeUpWithHeadphones();
    world.connectDevice(address);
    world.settle();
    world.daemon().freeze();
    world.killDaemon();
    EXPECT_THAT(disconnected, ElementsAre(headphones));
}

TEST_F(BlueZDevicesTest, ARepeatedStateIsNoNews)
{
    listen();
    comeUpWithHeadphones();
    world.connectDevice(address);
    world.connectDevice(address);
    world.say(address, {{u"Connected"_s, true}, {u"RSSI"_s, 5}});
    world.settle();
    EXPECT_THAT(connected, ElementsAre(headphones));
}

TEST_F(BlueZDevicesTest, ANameThatComesBeforeTheConnectionIsToldWithIt)
{
    listen();
    world.comeUp();
    world.pair(address, u"AA-BB-CC-DD-EE-01"_s);
    world.say(address, {{u"Alias"_s, u"My Headphones"_s}});
    world.connectDevice(address);
    world.settle();
    EXPECT_THAT(connected, ElementsAre(headphones));
}

TEST_F(BlueZDevicesTest, ADeviceWithoutANameHasNone)
{
    listen();
    world.comeUp();
    world.pair(address, u"AA-BB-CC-DD-EE-01"_s);
    world.connectDevice(address);
    world.settle();
    EXPECT_THAT(connected, ElementsAre(BluetoothDevice{std::nullopt, address}));
}

TEST_F(BlueZDevicesTest, MessagesOfWrongTypesAndShapesAreIgnored)
{
    listen();
    comeUpWithHeadphones();
    world.say(address, {{u"Connected"_s, u"yes"_s}});
    world.say(address, {{u"Connected"_s, 1}});
    world.say(
        u"/"_s, u"org.freedesktop.DBus.ObjectManager"_s, u"InterfacesAdded"_s, u"s"_s, {u"/org/bluez/x"_s});
    world.say(u"/"_s, u"org.freedesktop.DBus.ObjectManager"_s, u"InterfacesRemoved"_s, u"as"_s,
        {QStringList{u"org.bluez.Device1"_s}});
    world.say(BlueZWorld::pathOf(address), u"org.freedesktop.DBus.Properties"_s, u"PropertiesChanged"_s,
        u"s"_s, {u"org.bluez.Device1"_s});
    world.settle();
    EXPECT_THAT(connected, IsEmpty());
    world.connectDevice(address);
    world.settle();
    EXPECT_THAT(connected, ElementsAre(headphones));
}

TEST_F(BlueZDevicesTest, ADaemonThatAnswersNonsenseIsListenedToAllTheSame)
{
    world.comeUp();
    world.daemon().script(u"/"_s, u"AddMethod"_s,
        {u"org.freedesktop.DBus.ObjectManager"_s, u"GetManagedObjects"_s, QString(), u"s"_s,
            u"ret = 'nothing'"_s});
    listen();
    world.settle();
    world.pair(address, *headphones.name);
    world.connectDevice(address);
    world.settle();
    EXPECT_THAT(connected, ElementsAre(headphones));
}

TEST_F(BlueZDevicesTest, AnotherProgramCannotSpeakForTheDaemon)
{
    listen();
    comeUpWithHeadphones();
    QDBusMessage lie = QDBusMessage::createSignal(
        BlueZWorld::pathOf(address), u"org.freedesktop.DBus.Properties"_s, u"PropertiesChanged"_s);
    lie << u"org.bluez.Device1"_s << QVariantMap{{u"Connected"_s, true}} << QStringList();
    world.bus.control().send(lie);
    world.settle();
    EXPECT_THAT(connected, IsEmpty());
}

TEST_F(BlueZDevicesTest, TheBusEndingUnderItDisconnectsWhatWasConnected)
{
    listen();
    comeUpWithHeadphones();
    world.connectDevice(address);
    world.settle();
    world.bus.end();
    EXPECT_TRUE(eventually([this] { return disconnected.size() == 1; }));
}

TEST_F(BlueZDevicesTest, ADeviceWithoutAnAddressCannotBeWatched)
{
    EXPECT_FALSE(
        world.port().registerForDisconnectNotification({u"Anyone"_s, std::nullopt}, [](const auto &) { }));
}

TEST(BlueZDeviceDescription, TheAliasIsPreferredToTheName)
{
    EXPECT_EQ(describeBluetoothDevice(
                  {{u"Address"_s, address}, {u"Alias"_s, u"Mine"_s}, {u"Name"_s, u"Factory"_s}}),
        (BluetoothDevice{u"Mine"_s, address}));
    EXPECT_EQ(describeBluetoothDevice(
                  {{u"Address"_s, address}, {u"Alias"_s, u"AA-BB-CC-DD-EE-01"_s}, {u"Name"_s, u"Factory"_s}}),
        (BluetoothDevice{u"Factory"_s, address}));
}

TEST(BlueZDeviceDescription, EmptyTextsAndOtherTypesCountAsAbsent)
{
    EXPECT_EQ(describeBluetoothDevice({{u"Address"_s, u""_s}, {u"Alias"_s, u""_s}, {u"Name"_s, 3}}),
        BluetoothDevice());
    EXPECT_EQ(describeBluetoothDevice({}), BluetoothDevice());
}

TEST(BlueZDeviceDescription, AnEndlessNameIsCut)
{
    const auto device = describeBluetoothDevice({{u"Alias"_s, QString(1000000, u'x')}});
    EXPECT_EQ(device.name->size(), 248);
}

} // namespace brindle::test
