#pragma once

#include "foundation/Lifetime.h"
#include "platform/BluetoothDevices.h"

#include <QHash>
#include <QObject>
#include <QString>

#include <memory>

namespace brindle {

class ActivityCoordinator;
class Scheduler;

/// Posts when a Bluetooth peripheral connects or disconnects. Main thread.
class BluetoothMonitor : public QObject
{
    Q_OBJECT

public:
    BluetoothMonitor(ActivityCoordinator &activityCoordinator, BluetoothDevices &devices,
        Scheduler &scheduler, QObject *parent = nullptr);
    ~BluetoothMonitor() override;

    /// Registers for connections; a second call replaces the registration.
    void start();
    void stop();

    bool isObserving() const { return m_connectNotification != nullptr; }
    /// The devices whose end is watched, by address.
    QStringList watchedDevices() const { return m_disconnectNotifications.keys(); }

    /// The symbol for a device of this name.
    static QString symbolFor(const std::optional<QString> &name);

private:
    void deviceConnected(const BluetoothDevice &device);
    void deviceDisconnected(const BluetoothDevice &device);

    ActivityCoordinator &m_activityCoordinator;
    BluetoothDevices &m_devices;
    Scheduler &m_scheduler;
    std::shared_ptr<BluetoothNotification> m_connectNotification;
    QHash<QString, std::shared_ptr<BluetoothNotification>> m_disconnectNotifications;
    Lifetime m_lifetime;
};

} // namespace brindle
