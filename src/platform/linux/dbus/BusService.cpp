#include "platform/linux/dbus/BusService.h"

#include "platform/linux/dbus/BusConnection.h"
#include "platform/linux/dbus/BusMessages.h"

#include <QDBusServiceWatcher>

#include <utility>

namespace brindle {

namespace {

QDBusMessage busCall(const QString &method)
{
    return QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.DBus"),
        QStringLiteral("/org/freedesktop/DBus"), QStringLiteral("org.freedesktop.DBus"), method);
}

} // namespace

BusService::BusService(BusConnection &bus, const QString &name, WhenAbsent whenAbsent, QObject *parent)
    : QObject(parent)
    , m_bus(bus)
    , m_name(name)
    , m_whenAbsent(whenAbsent)
{ }

void BusService::follow()
{
    if (!std::exchange(m_follows, true))
        m_bus.whenReady(m_lifetime.guard([this](const QDBusConnection &connection) { begin(connection); }));
}

void BusService::begin(const QDBusConnection &connection)
{
    m_connection = connection;
    auto *watcher =
        new QDBusServiceWatcher(m_name, connection, QDBusServiceWatcher::WatchForOwnerChange, this);
    connect(watcher, &QDBusServiceWatcher::serviceOwnerChanged, this,
        [this](const QString &, const QString &, const QString &owner) { setOwner(owner); });
    m_connection->connect(QString(), QStringLiteral("/org/freedesktop/DBus/Local"),
        QStringLiteral("org.freedesktop.DBus.Local"), QStringLiteral("Disconnected"), this, SLOT(busLost()));
    askForOwner();
}

void BusService::askForOwner()
{
    QDBusMessage question = busCall(QStringLiteral("GetNameOwner"));
    question << m_name;
    bus::call(connection(), question, this, [this](const QDBusMessage &reply) {
        if (const auto owner = bus::argument(reply, QLatin1StringView("s"))) {
            setOwner(owner->toString());
        } else if (m_owner.isEmpty()) {
            Q_EMIT absent();
            if (m_whenAbsent == WhenAbsent::askTheBusToStartIt)
                askForStart();
        }
    });
}

void BusService::askForStart()
{
    QDBusMessage request = busCall(QStringLiteral("StartServiceByName"));
    request << m_name << 0U;
    // If it starts, its name appears; if it cannot, it may still come some other day.
    bus::call(connection(), request, this, [](const QDBusMessage &) { });
}

void BusService::setOwner(const QString &owner)
{
    if (owner == m_owner)
        return;
    if (!std::exchange(m_owner, owner).isEmpty())
        Q_EMIT vanished();
    if (!owner.isEmpty())
        Q_EMIT appeared(owner);
}

void BusService::busLost()
{
    setOwner({});
}

} // namespace brindle
