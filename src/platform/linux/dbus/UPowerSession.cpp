#include "platform/linux/dbus/UPowerSession.h"

#include "platform/linux/dbus/BusMessages.h"
#include "platform/linux/dbus/UPowerDescription.h"

#include <QDBusArgument>
#include <QDBusObjectPath>

namespace brindle {

namespace {

const QString machinePath = QStringLiteral("/org/freedesktop/UPower");
const QString machineInterface = QStringLiteral("org.freedesktop.UPower");
const QString deviceInterface = QStringLiteral("org.freedesktop.UPower.Device");

/// The bus refuses a connection that has too many questions open.
constexpr int questionsAtOnce = 16;
/// Far above what any machine has: a daemon gone mad must not fill our memory.
constexpr qsizetype mostDevices = 256;

std::optional<QString> pathOf(const QDBusMessage &signal)
{
    const auto path = bus::argument(signal, QLatin1StringView("o"));
    return path ? std::optional(path->value<QDBusObjectPath>().path()) : std::nullopt;
}

} // namespace

UPowerSession::UPowerSession(const QDBusConnection &connection, const QString &owner, QObject *parent)
    : QObject(parent)
    , m_connection(connection)
    , m_owner(owner)
{
    // Listening begins before reading, so that no change falls between the two.
    listen();
    readMachine();
    listDevices();
}

void UPowerSession::listen()
{
    m_connection.connect(m_owner, QString(), bus::propertiesInterface, QStringLiteral("PropertiesChanged"),
        this, SLOT(propertiesChanged(QDBusMessage)));
    m_connection.connect(m_owner, machinePath, machineInterface, QStringLiteral("DeviceAdded"), this,
        SLOT(deviceAdded(QDBusMessage)));
    m_connection.connect(m_owner, machinePath, machineInterface, QStringLiteral("DeviceRemoved"), this,
        SLOT(deviceRemoved(QDBusMessage)));
}

QDBusMessage UPowerSession::request(
    const QString &path, const QString &interface, const QString &method) const
{
    return QDBusMessage::createMethodCall(m_owner, path, interface, method);
}

void UPowerSession::readMachine()
{
    QDBusMessage question = request(machinePath, bus::propertiesInterface, QStringLiteral("GetAll"));
    question << machineInterface;
    bus::call(m_connection, question, this, [this](const QDBusMessage &reply) {
        m_isMachineRead = true;
        takeMachine(bus::properties(reply).value_or(QVariantMap()));
        progress();
    });
}

void UPowerSession::listDevices()
{
    const QDBusMessage question = request(machinePath, machineInterface, QStringLiteral("EnumerateDevices"));
    bus::call(m_connection, question, this, [this](const QDBusMessage &reply) {
        const auto paths = bus::argument(reply, QLatin1StringView("ao"));
        if (!paths)
            return; // it cannot tell, and so neither can we
        m_isListed = true;
        for (const QDBusObjectPath &path : qdbus_cast<QList<QDBusObjectPath>>(*paths))
            add(path.path());
        readNext();
        progress();
    });
}

void UPowerSession::add(const QString &path)
{
    if (m_devices.contains(path) || m_order.size() >= mostDevices)
        return;
    m_order.append(path);
    m_devices.insert(path, {});
    m_toRead.append(path);
}

void UPowerSession::readNext()
{
    while (m_beingRead < questionsAtOnce && !m_toRead.isEmpty())
        read(m_toRead.takeFirst());
}

void UPowerSession::read(const QString &path)
{
    QDBusMessage question = request(path, bus::propertiesInterface, QStringLiteral("GetAll"));
    question << deviceInterface;
    ++m_beingRead;
    bus::call(m_connection, question, this, [this, path](const QDBusMessage &reply) {
        --m_beingRead;
        if (const auto device = m_devices.find(path); device != m_devices.end()) {
            device->isRead = true;
            device->properties = bus::properties(reply);
        }
        readNext();
        progress();
    });
}

void UPowerSession::takeMachine(const QVariantMap &properties)
{
    // A value of a wrong type says nothing, and what was said before stands.
    if (const auto onBattery = bus::typed<bool>(properties, QStringLiteral("OnBattery")))
        m_onBattery = onBattery;
}

void UPowerSession::progress()
{
    m_isComplete = m_isComplete || (m_isMachineRead && m_isListed && m_toRead.isEmpty() && m_beingRead == 0);
    if (m_isComplete)
        Q_EMIT changed();
}

void UPowerSession::propertiesChanged(const QDBusMessage &signal)
{
    const auto change = bus::propertiesChange(signal);
    if (!change)
        return;
    if (change->interface == machineInterface && signal.path() == machinePath) {
        takeMachine(change->changed);
        if (change->invalidated.contains(QStringLiteral("OnBattery")))
            readMachine();
    } else if (change->interface == deviceInterface) {
        const auto device = m_devices.find(signal.path());
        // What changes before the first reading is in that reading.
        if (device == m_devices.end() || !device->isRead)
            return;
        if (!device->properties)
            device->properties.emplace();
        device->properties->insert(change->changed);
        if (!change->invalidated.isEmpty() && !m_toRead.contains(signal.path())) {
            m_toRead.append(signal.path());
            readNext();
        }
    } else {
        return;
    }
    progress();
}

void UPowerSession::deviceAdded(const QDBusMessage &signal)
{
    // Before the list has come, the list will tell.
    if (const auto path = pathOf(signal); path && m_isListed) {
        add(*path);
        readNext();
    }
}

void UPowerSession::deviceRemoved(const QDBusMessage &signal)
{
    const auto path = pathOf(signal);
    if (!path || !m_devices.remove(*path))
        return;
    m_order.removeOne(*path);
    m_toRead.removeOne(*path);
    progress();
}

std::optional<QList<std::optional<QVariantMap>>> UPowerSession::sources() const
{
    if (!m_isComplete)
        return std::nullopt;
    QList<std::optional<QVariantMap>> sources;
    for (const QString &path : m_order) {
        const Device device = m_devices.value(path);
        if (!device.isRead)
            continue;
        if (!device.properties)
            sources.resize(sources.size() + 1); // absent; appending a nullopt makes GCC 12 cry wolf at -O3
        else if (const auto description = describePowerSource(*device.properties, m_onBattery))
            sources.append(description);
    }
    return sources;
}

} // namespace brindle
