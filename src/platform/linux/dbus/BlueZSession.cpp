#include "platform/linux/dbus/BlueZSession.h"

#include <QDBusArgument>

#include <utility>

namespace brindle {

namespace {

const QString deviceInterface = QStringLiteral("org.bluez.Device1");
const QString connectedKey = QStringLiteral("Connected");

/// Bluetooth allows no longer ones.
constexpr qsizetype longestName = 248;
/// Far above what any radio sees: a daemon gone mad must not fill our memory.
constexpr qsizetype mostDevices = 4096;

std::optional<QString> nonEmpty(const QVariantMap &properties, const QString &key)
{
    const auto text = bus::typed<QString>(properties, key);
    return text && !text->isEmpty() ? std::optional(text->left(longestName)) : std::nullopt;
}

} // namespace

BluetoothDevice describeBluetoothDevice(const QVariantMap &properties)
{
    BluetoothDevice device;
    device.addressString = nonEmpty(properties, QStringLiteral("Address"));
    for (const QString &key : {QStringLiteral("Alias"), QStringLiteral("Name")}) {
        device.name = nonEmpty(properties, key);
        // A device without a name is given its address as one.
        if (device.name && device.addressString
            && QString(*device.name).replace(u'-', u':') == *device.addressString)
            device.name.reset();
        if (device.name)
            break;
    }
    return device;
}

BlueZSession::BlueZSession(
    const QDBusConnection &connection, const QString &owner, First first, QObject *parent)
    : QObject(parent)
    , m_connection(connection)
    , m_owner(owner)
{
    // Listening begins before reading, so that no change falls between the two.
    listen();
    readAll(first);
}

void BlueZSession::listen()
{
    m_connection.connect(m_owner, QStringLiteral("/"), bus::objectManagerInterface,
        QStringLiteral("InterfacesAdded"), this, SLOT(interfacesAdded(QDBusMessage)));
    m_connection.connect(m_owner, QStringLiteral("/"), bus::objectManagerInterface,
        QStringLiteral("InterfacesRemoved"), this, SLOT(interfacesRemoved(QDBusMessage)));
    // Adapters and players have properties too; the bus keeps those to itself.
    m_connection.connect(m_owner, QString(), bus::propertiesInterface, QStringLiteral("PropertiesChanged"),
        {deviceInterface}, QString(), this, SLOT(propertiesChanged(QDBusMessage)));
}

void BlueZSession::readAll(First first)
{
    const QDBusMessage question = QDBusMessage::createMethodCall(
        m_owner, QStringLiteral("/"), bus::objectManagerInterface, QStringLiteral("GetManagedObjects"));
    bus::call(m_connection, question, this, [this, first](const QDBusMessage &reply) {
        takeFirst(bus::managedObjects(reply).value_or(bus::ManagedObjects()), first);
    });
}

void BlueZSession::takeFirst(const bus::ManagedObjects &objects, First first)
{
    m_isRead = true;
    for (auto object = objects.begin(); object != objects.end(); ++object) {
        const auto device = object->constFind(deviceInterface);
        if (device == object->constEnd())
            continue;
        if (first == First::takeAsKnown) {
            const bool isConnected = bus::typed<bool>(*device, connectedKey).value_or(false);
            m_devices.insert(object.key().path(), {*device, isConnected});
        } else {
            add(object.key().path(), *device);
        }
    }
}

void BlueZSession::add(const QString &path, const QVariantMap &properties)
{
    if (!m_devices.contains(path) && m_devices.size() >= mostDevices)
        return;
    Known &known = m_devices[path];
    known.properties = properties;
    update(known);
}

void BlueZSession::update(Known &known)
{
    const auto isConnected = bus::typed<bool>(known.properties, connectedKey);
    if (!isConnected || std::exchange(known.isConnected, *isConnected) == *isConnected)
        return;
    const BluetoothDevice device = describeBluetoothDevice(known.properties);
    // Nothing of `known` after this: who hears it may do anything.
    if (*isConnected)
        Q_EMIT deviceConnected(device);
    else
        Q_EMIT deviceDisconnected(device);
}

void BlueZSession::disconnectAll()
{
    for (const Known &known : std::exchange(m_devices, {})) {
        if (known.isConnected)
            Q_EMIT deviceDisconnected(describeBluetoothDevice(known.properties));
    }
}

void BlueZSession::interfacesAdded(const QDBusMessage &signal)
{
    // What comes before the first reading is in that reading.
    if (!m_isRead || signal.signature() != QLatin1StringView("oa{sa{sv}}"))
        return;
    const auto interfaces = qdbus_cast<bus::Interfaces>(signal.arguments().at(1));
    if (const auto device = interfaces.constFind(deviceInterface); device != interfaces.constEnd())
        add(signal.arguments().at(0).value<QDBusObjectPath>().path(), *device);
}

void BlueZSession::interfacesRemoved(const QDBusMessage &signal)
{
    if (signal.signature() != QLatin1StringView("oas"))
        return;
    if (!qdbus_cast<QStringList>(signal.arguments().at(1)).contains(deviceInterface))
        return;
    const Known gone = m_devices.take(signal.arguments().at(0).value<QDBusObjectPath>().path());
    if (gone.isConnected)
        Q_EMIT deviceDisconnected(describeBluetoothDevice(gone.properties));
}

void BlueZSession::propertiesChanged(const QDBusMessage &signal)
{
    const auto change = bus::propertiesChange(signal);
    const auto known = m_devices.find(signal.path());
    if (!change || known == m_devices.end())
        return;
    for (const QString &name : change->invalidated)
        known->properties.remove(name);
    known->properties.insert(change->changed);
    if (change->changed.contains(connectedKey))
        update(*known);
}

} // namespace brindle
