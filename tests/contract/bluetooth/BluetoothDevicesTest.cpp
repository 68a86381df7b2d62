#include "contract/bluetooth/BlueZWorld.h"
#include "contract/bluetooth/BluetoothWorld.h"

#include <gmock/gmock.h>

namespace brindle::test {

namespace {

using namespace Qt::StringLiterals;
using testing::ElementsAre;

const QString address = u"AA:BB:CC:DD:EE:01"_s;
const QString otherAddress = u"AA:BB:CC:DD:EE:02"_s;
const BluetoothDevice headphones{u"My Headphones"_s, address};
const BluetoothDevice mouse{u"A Mouse"_s, otherAddress};

} // namespace

/// What the port promises, whoever keeps it.
template <typename World> class BluetoothDevicesContract : public testing::Test
{
protected:
    BluetoothDevicesContract()
    {
        world.comeUp();
        world.pair(address, *headphones.name);
        world.pair(otherAddress, *mouse.name);
        connectNotification = world.port().registerForConnectNotifications(
            [this](const BluetoothDevice &device) { connected.append(device); });
        world.settle();
    }

    std::shared_ptr<BluetoothNotification> watch(const BluetoothDevice &device)
    {
        return world.port().registerForDisconnectNotification(
            device, [this](const BluetoothDevice &gone) { disconnected.append(gone); });
    }

    World world;
    QList<BluetoothDevice> connected;
    QList<BluetoothDevice> disconnected;
    std::shared_ptr<BluetoothNotification> connectNotification;
};

using Worlds = testing::Types<FakeBluetoothWorld, BlueZWorld>;
TYPED_TEST_SUITE(BluetoothDevicesContract, Worlds);

TYPED_TEST(BluetoothDevicesContract, ADeviceThatConnectsIsToldWithNameAndAddress)
{
    this->world.connectDevice(address);
    this->world.settle();
    EXPECT_THAT(this->connected, ElementsAre(headphones));
}

TYPED_TEST(BluetoothDevicesContract, DevicesAreToldInTheOrderOfTheirConnecting)
{
    this->world.connectDevice(otherAddress);
    this->world.connectDevice(address);
    this->world.settle();
    EXPECT_THAT(this->connected, ElementsAre(mouse, headphones));
}

TYPED_TEST(BluetoothDevicesContract, ADisconnectionIsToldToWhoWatchesThatDevice)
{
    this->world.connectDevice(address);
    this->world.connectDevice(otherAddress);
    this->world.settle();
    const auto watching = this->watch(headphones);
    ASSERT_TRUE(watching);
    this->world.disconnectDevice(otherAddress);
    this->world.disconnectDevice(address);
    this->world.settle();
    EXPECT_THAT(this->disconnected, ElementsAre(headphones));
}

TYPED_TEST(BluetoothDevicesContract, ADeviceThatReturnsIsToldAgain)
{
    this->world.connectDevice(address);
    this->world.disconnectDevice(address);
    this->world.connectDevice(address);
    this->world.settle();
    EXPECT_THAT(this->connected, ElementsAre(headphones, headphones));
}

TYPED_TEST(BluetoothDevicesContract, AnUnregisteredNotificationIsSilent)
{
    this->connectNotification->unregister();
    this->world.connectDevice(address);
    this->world.settle();
    const auto watching = this->watch(headphones);
    watching->unregister();
    watching->unregister();
    this->world.disconnectDevice(address);
    this->world.settle();
    EXPECT_THAT(this->connected, ElementsAre());
    EXPECT_THAT(this->disconnected, ElementsAre());
}

TYPED_TEST(BluetoothDevicesContract, DroppingTheHandleEndsNothing)
{
    this->connectNotification.reset();
    this->world.connectDevice(address);
    this->world.settle();
    this->watch(headphones).reset();
    this->world.disconnectDevice(address);
    this->world.settle();
    EXPECT_THAT(this->connected, ElementsAre(headphones));
    EXPECT_THAT(this->disconnected, ElementsAre(headphones));
}

TYPED_TEST(BluetoothDevicesContract, WhoIsToldMayRegisterAndUnregister)
{
    QList<BluetoothDevice> heard;
    std::shared_ptr<BluetoothNotification> own;
    own = this->world.port().registerForConnectNotifications([&](const BluetoothDevice &device) {
        heard.append(device);
        own->unregister();
        this->watch(device);
    });
    this->world.connectDevice(address);
    this->world.connectDevice(otherAddress);
    this->world.disconnectDevice(address);
    this->world.settle();
    EXPECT_THAT(heard, ElementsAre(headphones));
    EXPECT_THAT(this->disconnected, ElementsAre(headphones));
}

} // namespace brindle::test
