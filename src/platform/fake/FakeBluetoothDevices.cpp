#include "platform/fake/FakeBluetoothDevices.h"

#include <algorithm>

namespace brindle {

struct FakeBluetoothDevices::Registration : BluetoothNotification
{
    BluetoothDevice device;
    Handler handler;

    void unregister() override { handler = nullptr; }
};

std::shared_ptr<BluetoothNotification> FakeBluetoothDevices::registerForConnectNotifications(
    Handler connected)
{
    return add(m_connect, {}, std::move(connected));
}

std::shared_ptr<BluetoothNotification> FakeBluetoothDevices::registerForDisconnectNotification(
    const BluetoothDevice &device, Handler disconnected)
{
    if (refusesDisconnectNotifications)
        return nullptr;
    return add(m_disconnect, device, std::move(disconnected));
}

std::shared_ptr<BluetoothNotification> FakeBluetoothDevices::add(
    QList<std::shared_ptr<Registration>> &list, const BluetoothDevice &device, Handler handler)
{
    const auto registration = std::make_shared<Registration>();
    registration->device = device;
    registration->handler = std::move(handler);
    list.append(registration);
    ++m_made;
    return registration;
}

void FakeBluetoothDevices::connectDevice(const BluetoothDevice &device)
{
    // Copies: handlers may register and unregister.
    for (const auto &registration : QList(m_connect)) {
        if (const auto handler = registration->handler)
            handler(device);
    }
}

void FakeBluetoothDevices::disconnectDevice(const BluetoothDevice &device)
{
    for (const auto &registration : QList(m_disconnect)) {
        const auto handler = registration->handler;
        if (handler && registration->device.addressString == device.addressString)
            handler(device);
    }
}

qsizetype FakeBluetoothDevices::connectRegistrations() const
{
    return std::ranges::count_if(
        m_connect, [](const auto &registration) { return bool(registration->handler); });
}

qsizetype FakeBluetoothDevices::disconnectRegistrations() const
{
    return std::ranges::count_if(
        m_disconnect, [](const auto &registration) { return bool(registration->handler); });
}

} // namespace brindle
