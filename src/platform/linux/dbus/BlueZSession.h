#pragma once

#include "platform/BluetoothDevices.h"
#include "platform/linux/dbus/BusMessages.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QHash>
#include <QObject>
#include <QStringList>

namespace brindle {

/// All that one run of the BlueZ daemon has said of devices. Goes when the daemon goes. Main thread; never
/// blocks.
class BlueZSession : public QObject
{
    Q_OBJECT

public:
    /// What to do with devices that are connected when the daemon is first asked.
    enum class First { announce, takeAsKnown };

    /// Begins to read at once; `owner` is the daemon's unique name.
    BlueZSession(
        const QDBusConnection &connection, const QString &owner, First first, QObject *parent = nullptr);

    /// Every connected device counts as disconnected from now on. For a daemon that has gone.
    void disconnectAll();

Q_SIGNALS:
    void deviceConnected(const brindle::BluetoothDevice &device);
    void deviceDisconnected(const brindle::BluetoothDevice &device);

private Q_SLOTS:
    void interfacesAdded(const QDBusMessage &signal);
    void interfacesRemoved(const QDBusMessage &signal);
    void propertiesChanged(const QDBusMessage &signal);

private:
    struct Known
    {
        QVariantMap properties;
        bool isConnected = false;
    };

    void listen();
    void readAll(First first);
    void takeFirst(const bus::ManagedObjects &objects, First first);
    void add(const QString &path, const QVariantMap &properties);
    void update(Known &known);

    QDBusConnection m_connection;
    const QString m_owner;
    bool m_isRead = false;
    /// By object path.
    QHash<QString, Known> m_devices;
};

/// A device as the port tells of it, from the properties that BlueZ gives it.
BluetoothDevice describeBluetoothDevice(const QVariantMap &properties);

} // namespace brindle
