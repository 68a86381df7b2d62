#pragma once

#include "foundation/Lifetime.h"

#include <QDBusConnection>
#include <QList>
#include <QObject>

#include <functional>
#include <future>
#include <optional>
#include <thread>

namespace brindle {

class Scheduler;

/// A connection to a message bus, made on a thread of its own: a bus that is slow or hangs holds nothing up
/// but those who wait for it.
///
/// Made on first use and once only; where there is no bus, nobody is ever called. Main thread. What the
/// connection's user registers on it must go before this does.
class BusConnection : public QObject
{
    Q_OBJECT

public:
    /// Opens the connection under the name that it is given; the result may be disconnected. Called on the
    /// other thread.
    using Open = std::function<QDBusConnection(const QString &name)>;
    using Ready = std::function<void(const QDBusConnection &)>;

    BusConnection(Open open, Scheduler &scheduler, QObject *parent = nullptr);
    ~BusConnection() override;

    static Open systemBus();
    /// The bus of the user's session. Absent where the session has none: none is started.
    static Open sessionBus();
    static Open busAt(const QString &address);

    /// Begins to connect, if that has not begun. Costs the caller the start of a thread.
    void open();
    /// Calls `ready` once there is a connection: on a later turn, or at once if it is there already.
    void whenReady(Ready ready);
    /// Waits until the connection stands or cannot be had, but no longer than `seconds`. Whoever wanted to be
    /// called when it is ready has been called then.
    std::optional<QDBusConnection> waitForConnection(double seconds);

private:
    void arrived();

    const Open m_open;
    const QString m_name;
    Scheduler &m_scheduler;
    std::thread m_thread;
    std::shared_future<QDBusConnection> m_result;
    /// The connection, once its arrival was announced on the main thread.
    std::optional<QDBusConnection> m_connection;
    QList<Ready> m_waiting;
    Lifetime m_lifetime;
};

} // namespace brindle
