#pragma once

#include "platform/BluetoothDevices.h"
#include "platform/linux/dbus/BusService.h"

#include <QList>
#include <QObject>

#include <memory>

namespace brindle {

class BlueZSession;
class BusConnection;

/// The Bluetooth devices as BlueZ knows them. Begins to look with the first registration; the daemon may be
/// missing, come late, hang, die and return. When it dies, its devices are gone.
class BlueZDevices : public QObject, public BluetoothDevices
{
    Q_OBJECT

public:
    explicit BlueZDevices(BusConnection &systemBus);
    ~BlueZDevices() override;

    std::shared_ptr<BluetoothNotification> registerForConnectNotifications(Handler connected) override;
    std::shared_ptr<BluetoothNotification> registerForDisconnectNotification(
        const BluetoothDevice &device, Handler disconnected) override;

private:
    struct Registration;
    using Registrations = QList<std::shared_ptr<Registration>>;

    void begin(const QString &owner);
    void end();
    void tell(Registrations &registrations, const BluetoothDevice &device);

    BusService m_service;
    /// Whether the daemon was there already when it was first looked for: what is connected then is no news.
    bool m_isFirstLook = true;
    std::unique_ptr<BlueZSession> m_session;
    Registrations m_forConnect;
    Registrations m_forDisconnect;
};

} // namespace brindle
