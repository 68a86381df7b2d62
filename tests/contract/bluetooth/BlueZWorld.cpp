#include "contract/bluetooth/BlueZWorld.h"

#include <QDBusObjectPath>

namespace brindle::test {

namespace {

const QString adapter = QStringLiteral("hci0");
const QString adapterPath = QStringLiteral("/org/bluez/hci0");
const QString root = QStringLiteral("/");
const QString scripting = QStringLiteral("org.bluez.Mock");
/// Its class of device says that it is a headset.
constexpr int headset = 0x240404;

} // namespace

QString BlueZWorld::pathOf(const QString &address)
{
    return adapterPath + QStringLiteral("/dev_") + QString(address).replace(u':', u'_');
}

void BlueZWorld::comeUp()
{
    m_daemon = std::make_unique<DbusMock>(bus, QStringLiteral("org.bluez"), QStringLiteral("bluez5"));
    m_daemon->call(root, scripting, QStringLiteral("AddAdapter"), {adapter, QStringLiteral("desk")});
    settle();
}

void BlueZWorld::killDaemon()
{
    m_daemon->kill();
    m_daemon.reset();
    settle();
}

void BlueZWorld::pair(const QString &address, const QString &name)
{
    m_daemon->call(root, scripting, QStringLiteral("AddDevice"), {adapter, address, name});
    m_daemon->call(root, scripting, QStringLiteral("PairDevice"), {adapter, address, headset});
}

void BlueZWorld::connectDevice(const QString &address)
{
    m_daemon->call(root, scripting, QStringLiteral("ConnectDevice"), {adapter, address});
}

void BlueZWorld::disconnectDevice(const QString &address)
{
    m_daemon->call(root, scripting, QStringLiteral("DisconnectDevice"), {adapter, address});
}

void BlueZWorld::forget(const QString &address)
{
    m_daemon->call(adapterPath, QStringLiteral("org.bluez.Adapter1"), QStringLiteral("RemoveDevice"),
        {QVariant::fromValue(QDBusObjectPath(pathOf(address)))});
}

void BlueZWorld::say(const QString &address, const QVariantMap &properties)
{
    say(pathOf(address), QStringLiteral("org.freedesktop.DBus.Properties"),
        QStringLiteral("PropertiesChanged"), QStringLiteral("sa{sv}as"),
        {QStringLiteral("org.bluez.Device1"), properties, QStringList()});
}

void BlueZWorld::say(const QString &path, const QString &interface, const QString &signal,
    const QString &signature, const QVariantList &arguments)
{
    m_daemon->script(path, QStringLiteral("EmitSignal"), {interface, signal, signature, QVariant(arguments)});
}

void BlueZWorld::settle()
{
    deliverInRounds(*m_connection.waitForConnection(10), m_daemon.get());
}

} // namespace brindle::test
