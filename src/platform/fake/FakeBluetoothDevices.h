#pragma once

#include "platform/BluetoothDevices.h"

#include <QList>

namespace brindle {

/// Bluetooth devices that come and go as a test says.
class FakeBluetoothDevices : public BluetoothDevices
{
public:
    /// Disconnection cannot be watched, as of a device that is gone already.
    bool refusesDisconnectNotifications = false;

    std::shared_ptr<BluetoothNotification> registerForConnectNotifications(Handler connected) override;
    std::shared_ptr<BluetoothNotification> registerForDisconnectNotification(
        const BluetoothDevice &device, Handler disconnected) override;

    void connectDevice(const BluetoothDevice &device);
    void disconnectDevice(const BluetoothDevice &device);

    /// Registrations that stand, and how many were made and ended since the start.
    qsizetype connectRegistrations() const;
    qsizetype disconnectRegistrations() const;
    int registrationsMade() const { return m_made; }

private:
    struct Registration;

    std::shared_ptr<BluetoothNotification> add(
        QList<std::shared_ptr<Registration>> &list, const BluetoothDevice &device, Handler handler);

    QList<std::shared_ptr<Registration>> m_connect;
    QList<std::shared_ptr<Registration>> m_disconnect;
    int m_made = 0;
};

} // namespace brindle
