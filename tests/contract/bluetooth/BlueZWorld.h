#pragma once

#include "contract/bluetooth/BluetoothWorld.h"
#include "foundation/SystemScheduler.h"
#include "platform/linux/dbus/BlueZDevices.h"
#include "platform/linux/dbus/BusConnection.h"
#include "support/dbus/DbusMock.h"
#include "support/dbus/PrivateBus.h"

#include <memory>

namespace brindle::test {

/// A private system bus with a scripted BlueZ on it.
class BlueZWorld : public BluetoothWorld
{
public:
    BluetoothDevices &port() override { return m_port; }
    void comeUp() override;
    void pair(const QString &address, const QString &name) override;
    void connectDevice(const QString &address) override;
    void disconnectDevice(const QString &address) override;
    void settle() override;

    DbusMock &daemon() { return *m_daemon; }
    void killDaemon();
    /// Takes the device out of the daemon's list.
    void forget(const QString &address);
    /// A change of properties as the daemon would send it, whatever it says.
    void say(const QString &address, const QVariantMap &properties);
    /// A signal of the device's object, whatever it says.
    void say(const QString &path, const QString &interface, const QString &signal, const QString &signature,
        const QVariantList &arguments);

    static QString pathOf(const QString &address);

    PrivateBus bus;

private:
    SystemScheduler m_time;
    BusConnection m_connection{BusConnection::busAt(bus.address()), m_time};
    BlueZDevices m_port{m_connection};
    std::unique_ptr<DbusMock> m_daemon;
};

} // namespace brindle::test
