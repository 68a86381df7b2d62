#pragma once

#include "platform/PowerSources.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QHash>
#include <QObject>
#include <QStringList>

namespace brindle {

/// All that one run of the UPower daemon has said. Goes when the daemon goes. Main thread; never blocks.
class UPowerSession : public QObject
{
    Q_OBJECT

public:
    /// Begins to read at once; `owner` is the daemon's unique name.
    UPowerSession(const QDBusConnection &connection, const QString &owner, QObject *parent = nullptr);

    /// Absent until everything was read once.
    std::optional<QList<std::optional<QVariantMap>>> sources() const;

Q_SIGNALS:
    /// `sources()` may answer something else now. Comes for each message.
    void changed();

private Q_SLOTS:
    void propertiesChanged(const QDBusMessage &signal);
    void deviceAdded(const QDBusMessage &signal);
    void deviceRemoved(const QDBusMessage &signal);

private:
    struct Device
    {
        bool isRead = false;
        /// Absent when the daemon would not tell.
        std::optional<QVariantMap> properties;
    };

    void listen();
    void readMachine();
    void listDevices();
    void add(const QString &path);
    void readNext();
    void read(const QString &path);
    void takeMachine(const QVariantMap &properties);
    void progress();

    QDBusMessage request(const QString &path, const QString &interface, const QString &method) const;

    QDBusConnection m_connection;
    const QString m_owner;
    std::optional<bool> m_onBattery;
    /// In the daemon's order.
    QStringList m_order;
    QHash<QString, Device> m_devices;
    QStringList m_toRead;
    int m_beingRead = 0;
    bool m_isMachineRead = false;
    bool m_isListed = false;
    bool m_isComplete = false;
};

} // namespace brindle
