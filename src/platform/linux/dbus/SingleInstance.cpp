#include "platform/linux/dbus/SingleInstance.h"

#include "platform/linux/dbus/BusConnection.h"
#include "platform/linux/dbus/BusMessages.h"

namespace brindle {

namespace {

constexpr double patienceWithBus = 1; // seconds
constexpr int patienceWithBusAnswer = 1000; // milliseconds
constexpr int patienceWithFirst = 2000; // milliseconds

/// The bus's words in numbers.
constexpr uint doNotQueue = 4;
constexpr uint nameExists = 3;

} // namespace

SingleInstance::SingleInstance(BusConnection &sessionBus) : m_bus(sessionBus) { }

SingleInstance::Claim SingleInstance::claim()
{
    m_connection = m_bus.waitForConnection(patienceWithBus);
    if (!m_connection)
        return Claim::noBus;
    // First the object, then the name: who sees the name may call at once.
    m_connection->registerObject(path, this, QDBusConnection::ExportScriptableSlots);
    if (takeName())
        return Claim::first;
    m_connection->unregisterObject(path);
    return Claim::second;
}

bool SingleInstance::takeName()
{
    QDBusMessage request = QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.DBus"),
        QStringLiteral("/org/freedesktop/DBus"), QStringLiteral("org.freedesktop.DBus"),
        QStringLiteral("RequestName"));
    request << name << doNotQueue;
    const QDBusMessage reply = m_connection->call(request, QDBus::Block, patienceWithBusAnswer);
    // A bus that does not answer is no reason to stay away.
    const auto outcome = bus::argument(reply, QLatin1StringView("u"));
    return !outcome || outcome->toUInt() != nameExists;
}

void SingleInstance::activateFirst()
{
    QDBusMessage request = QDBusMessage::createMethodCall(
        name, path, QStringLiteral("org.freedesktop.Application"), QStringLiteral("Activate"));
    request.setAutoStartService(false);
    const QString token = qEnvironmentVariable("XDG_ACTIVATION_TOKEN");
    request << (token.isEmpty() ? QVariantMap() : QVariantMap{{QStringLiteral("activation-token"), token}});
    m_connection->call(request, QDBus::Block, patienceWithFirst);
}

void SingleInstance::Activate(const QVariantMap & /*platformData*/)
{
    Q_EMIT activated();
}

void SingleInstance::Open(const QStringList & /*uris*/, const QVariantMap & /*platformData*/)
{
    Q_EMIT activated();
}

void SingleInstance::ActivateAction(
    const QString &action, const QVariantList & /*parameter*/, const QVariantMap & /*platformData*/)
{
    Q_EMIT actionActivated(action);
}

} // namespace brindle
