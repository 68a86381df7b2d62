#include "platform/linux/dbus/BlueZDevices.h"

#include "platform/linux/dbus/BlueZSession.h"

#include <utility>

namespace brindle {

struct BlueZDevices::Registration : BluetoothNotification
{
    /// Of which device; absent for all.
    std::optional<QString> address;
    /// Empty once it was unregistered.
    Handler handler;

    void unregister() override { handler = nullptr; }
};

// The desktop decides whether Bluetooth runs, so the daemon is not started for the sake of watching it.
BlueZDevices::BlueZDevices(BusConnection &systemBus)
    : m_service(systemBus, QStringLiteral("org.bluez"), BusService::WhenAbsent::wait)
{
    connect(&m_service, &BusService::appeared, this, &BlueZDevices::begin);
    connect(&m_service, &BusService::vanished, this, &BlueZDevices::end);
    connect(&m_service, &BusService::absent, this, [this] { m_isFirstLook = false; });
}

BlueZDevices::~BlueZDevices() = default;

std::shared_ptr<BluetoothNotification> BlueZDevices::registerForConnectNotifications(Handler connected)
{
    const auto registration = std::make_shared<Registration>();
    registration->handler = std::move(connected);
    m_forConnect.append(registration);
    m_service.follow();
    return registration;
}

std::shared_ptr<BluetoothNotification> BlueZDevices::registerForDisconnectNotification(
    const BluetoothDevice &device, Handler disconnected)
{
    if (!device.addressString)
        return nullptr;
    const auto registration = std::make_shared<Registration>();
    registration->address = device.addressString;
    registration->handler = std::move(disconnected);
    m_forDisconnect.append(registration);
    m_service.follow();
    return registration;
}

void BlueZDevices::begin(const QString &owner)
{
    const auto first = std::exchange(m_isFirstLook, false) ? BlueZSession::First::takeAsKnown
                                                           : BlueZSession::First::announce;
    m_session = std::make_unique<BlueZSession>(m_service.connection(), owner, first);
    connect(m_session.get(), &BlueZSession::deviceConnected, this,
        [this](const BluetoothDevice &device) { tell(m_forConnect, device); });
    connect(m_session.get(), &BlueZSession::deviceDisconnected, this,
        [this](const BluetoothDevice &device) { tell(m_forDisconnect, device); });
}

void BlueZDevices::end()
{
    m_session->disconnectAll();
    m_session.reset();
}

void BlueZDevices::tell(Registrations &registrations, const BluetoothDevice &device)
{
    registrations.removeIf([](const auto &registration) { return !registration->handler; });
    // Copies: who is called may register and unregister, itself too.
    for (const auto &registration : Registrations(registrations)) {
        const Handler handler = registration->handler;
        if (handler && (!registration->address || registration->address == device.addressString))
            handler(device);
    }
}

} // namespace brindle
