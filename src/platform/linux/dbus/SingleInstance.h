#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QStringList>
#include <QVariantMap>

#include <optional>

namespace brindle {

class BusConnection;

/// The one instance of the program in the user's session, and the desktop's way to speak to it: the interface
/// `org.freedesktop.Application` under the program's own name. Main thread.
class SingleInstance : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

public:
    enum class Claim { first, second, noBus };

    static inline const QString name = QStringLiteral("com.brindle.app");
    static inline const QString path = QStringLiteral("/com/brindle/app");

    explicit SingleInstance(BusConnection &sessionBus);

    /// Takes the name, unless another has it. Waits for the bus, but for a second at the longest: a session
    /// whose bus hangs, or that has none, gets its program all the same.
    Claim claim();
    /// Asks the instance that has the name to show itself. Waits until it has heard, or for two seconds.
    void activateFirst();

Q_SIGNALS:
    /// Somebody asked the program to show itself, by starting it again or otherwise.
    void activated();
    /// Somebody asked for an action by its name, which may be any text.
    void actionActivated(const QString &action);

public Q_SLOTS:
    // The bus calls these.
    Q_SCRIPTABLE void Activate(const QVariantMap &platformData);
    Q_SCRIPTABLE void Open(const QStringList &uris, const QVariantMap &platformData);
    Q_SCRIPTABLE void ActivateAction(
        const QString &action, const QVariantList &parameter, const QVariantMap &platformData);

private:
    bool takeName();

    BusConnection &m_bus;
    std::optional<QDBusConnection> m_connection;
};

} // namespace brindle
