#include "platform/linux/dbus/BusConnection.h"

#include "foundation/Scheduler.h"

#include <QFileInfo>

#include <atomic>
#include <chrono>
#include <utility>

namespace brindle {

namespace {

QString freshName()
{
    static std::atomic<int> count = 0;
    return QStringLiteral("brindle-%1").arg(++count);
}

QDBusConnection disconnected(const QString &name)
{
    return QDBusConnection(name);
}

} // namespace

BusConnection::BusConnection(Open open, Scheduler &scheduler, QObject *parent)
    : QObject(parent)
    , m_open(std::move(open))
    , m_name(freshName())
    , m_scheduler(scheduler)
{ }

BusConnection::~BusConnection()
{
    if (!m_thread.joinable())
        return;
    m_thread.join();
    m_connection.reset();
    QDBusConnection::disconnectFromBus(m_name);
}

BusConnection::Open BusConnection::systemBus()
{
    return
        [](const QString &name) { return QDBusConnection::connectToBus(QDBusConnection::SystemBus, name); };
}

BusConnection::Open BusConnection::sessionBus()
{
    return [](const QString &name) {
        // Without an address the library would start a bus of its own, which nobody else would be on.
        const QString usual = qEnvironmentVariable("XDG_RUNTIME_DIR") + QStringLiteral("/bus");
        if (qEnvironmentVariableIsEmpty("DBUS_SESSION_BUS_ADDRESS") && !QFileInfo::exists(usual))
            return disconnected(name);
        return QDBusConnection::connectToBus(QDBusConnection::SessionBus, name);
    };
}

BusConnection::Open BusConnection::busAt(const QString &address)
{
    return [address](const QString &name) { return QDBusConnection::connectToBus(address, name); };
}

void BusConnection::open()
{
    if (m_result.valid())
        return;
    std::promise<QDBusConnection> promise;
    m_result = promise.get_future().share();
    m_thread =
        std::thread([open = m_open, name = m_name, &scheduler = m_scheduler, promise = std::move(promise),
                        announce = m_lifetime.guard([this] { arrived(); })]() mutable {
            promise.set_value(open(name));
            scheduler.post(std::move(announce));
        });
}

void BusConnection::arrived()
{
    const QDBusConnection connection = m_result.get();
    if (connection.isConnected())
        m_connection = connection;
    for (const Ready &ready : std::exchange(m_waiting, {})) {
        if (m_connection)
            ready(connection);
    }
}

void BusConnection::whenReady(Ready ready)
{
    open();
    if (m_connection)
        ready(*m_connection);
    else
        m_waiting.append(std::move(ready));
}

std::optional<QDBusConnection> BusConnection::waitForConnection(double seconds)
{
    open();
    if (m_result.wait_for(std::chrono::duration<double>(seconds)) != std::future_status::ready)
        return std::nullopt;
    // The other thread's announcement may still be on its way; nobody who waits need wait for it.
    arrived();
    return m_connection;
}

} // namespace brindle
