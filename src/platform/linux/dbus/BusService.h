#pragma once

#include "foundation/Lifetime.h"

#include <QDBusConnection>
#include <QObject>

#include <optional>

namespace brindle {

class BusConnection;

/// Follows whether somebody owns a name on the bus, through death and return. Asks nothing of the owner
/// itself, so one that hangs does no harm. Main thread.
class BusService : public QObject
{
    Q_OBJECT

public:
    enum class WhenAbsent { wait, askTheBusToStartIt };

    BusService(BusConnection &bus, const QString &name, WhenAbsent whenAbsent, QObject *parent = nullptr);

    /// Begins to look. A second call does nothing.
    void follow();

    /// Valid from the first signal on.
    const QDBusConnection &connection() const { return *m_connection; }

Q_SIGNALS:
    /// `owner` is the unique name of who has the name now.
    void appeared(const QString &owner);
    void vanished();
    /// The first look found nobody.
    void absent();

private Q_SLOTS:
    void busLost();

private:
    void begin(const QDBusConnection &connection);
    void askForOwner();
    void askForStart();
    void setOwner(const QString &owner);

    BusConnection &m_bus;
    const QString m_name;
    const WhenAbsent m_whenAbsent;
    bool m_follows = false;
    std::optional<QDBusConnection> m_connection;
    QString m_owner;
    Lifetime m_lifetime;
};

} // namespace brindle
