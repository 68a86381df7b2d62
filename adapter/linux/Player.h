#pragma once

#include "adapter/linux/ApplicationIdentifier.h"
#include "adapter/linux/CommandLine.h"
#include "adapter/linux/PlayerModel.h"
#include "foundation/Scheduler.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>

#include <functional>

namespace brindle::adapter {

/// A player on the bus: follows what it says, asks when there is reason to, and passes commands on.
///
/// Nothing here waits for it. One that hangs stays as it was last known; one that never answered is not
/// known.
class Player : public QObject
{
    Q_OBJECT

public:
    struct Address
    {
        /// "org.mpris.MediaPlayer2.…"
        QString name;
        /// The unique name of who owns it.
        QString owner;
    };
    /// Called when a command has got through, or cannot: whether it got through.
    using Done = std::function<void(bool)>;

    Player(const Address &address, const QDBusConnection &bus, Scheduler &scheduler, const PlayerModel &model,
        QObject *parent = nullptr);

    static inline const QString namePrefix = QStringLiteral("org.mpris.MediaPlayer2.");
    static inline const QString path = QStringLiteral("/org/mpris/MediaPlayer2");
    static inline const QString interface = QStringLiteral("org.mpris.MediaPlayer2.Player");

    /// Another one for each player that ever was; above 0.
    quint64 number() const { return m_number; }
    const Address &address() const { return m_address; }
    const PlayerModel &model() const { return m_model; }
    /// The best that is known of it until now.
    const QString &bundleIdentifier() const { return m_bundleIdentifier; }
    /// Whether all that it was asked at first is answered, or refused.
    bool hasAnswered() const { return m_hasToldProperties && m_hasToldOrigin; }

    /// Asks for all properties anew. Calls that come faster than it answers become one.
    void refresh();
    /// The player's signals, as they come from the bus.
    void takePropertiesChanged(const QDBusMessage &signal);
    void takeSeeked(const QDBusMessage &signal);

    void send(Command command, const Done &done);
    /// Seconds from the start of the track.
    void seek(double seconds, const Done &done);

Q_SIGNALS:
    void changed();

private:
    QDBusMessage call(
        const QString &interface, const QString &method, const QVariantList &arguments = {}) const;
    void tell(const QString &method, const QVariantList &arguments, const Done &done);
    void ask();
    void takeAnswer(const QDBusMessage &reply);
    void askForOrigin();
    void askForExecutable(PlayerOrigin origin);
    void takeOrigin(const PlayerOrigin &origin);
    void seekBy(double target, const Done &done);

    const Address m_address;
    const QDBusConnection m_bus;
    Scheduler &m_scheduler;
    const quint64 m_number;
    PlayerModel m_model;
    QString m_bundleIdentifier;
    bool m_hasToldProperties = false;
    bool m_hasToldOrigin = false;
    /// Uptime of the last question.
    double m_askedAt = 0;
    bool m_isAsked = false;
    bool m_hasToAskAgain = false;
    Delay m_nextQuestion;
};

/// The method that does what `command` says in a player of this state.
QString methodOf(Command command, const PlayerState &state);

} // namespace brindle::adapter
