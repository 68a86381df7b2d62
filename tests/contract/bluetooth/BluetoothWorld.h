#pragma once

#include "platform/BluetoothDevices.h"
#include "platform/fake/FakeBluetoothDevices.h"

#include <QMap>

namespace brindle::test {

/// Bluetooth devices, seen through the port, and the hand that switches them on and off.
class BluetoothWorld
{
public:
    virtual ~BluetoothWorld() = default;

    virtual BluetoothDevices &port() = 0;
    /// The system's service comes up, and knows no device.
    virtual void comeUp() = 0;
    virtual void pair(const QString &address, const QString &name) = 0;
    virtual void connectDevice(const QString &address) = 0;
    virtual void disconnectDevice(const QString &address) = 0;
    /// Lets everything that was done arrive at the port.
    virtual void settle() = 0;
};

class FakeBluetoothWorld : public BluetoothWorld
{
public:
    BluetoothDevices &port() override { return m_port; }
    void comeUp() override { }
    void pair(const QString &address, const QString &name) override { m_names[address] = name; }
    void connectDevice(const QString &address) override { m_port.connectDevice({m_names[address], address}); }
    void disconnectDevice(const QString &address) override
    {
        m_port.disconnectDevice({m_names[address], address});
    }
    void settle() override { }

private:
    FakeBluetoothDevices m_port;
    QMap<QString, QString> m_names;
};

} // namespace brindle::test
