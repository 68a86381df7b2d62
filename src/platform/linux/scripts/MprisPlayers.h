#pragma once

#include "platform/linux/scripts/Deadline.h"

#include <QDBusConnection>
#include <QString>
#include <QStringList>
#include <QVariantList>

#include <optional>

namespace brindle {

/// What a player on the session's bus says of itself. What it did not say, or said in a wrong type, is empty.
struct MprisState
{
    enum class Status { stopped, paused, playing };

    Status status = Status::stopped;
    QString title;
    QString artist;
    QString album;
    QString url;
    QString artworkUrl;
    /// Names the track to the player.
    QString track;
    /// The process that plays, where the player speaks for another.
    std::optional<qint64> process;
    /// Microseconds.
    double length = 0;
    double position = 0;
};

/// What the properties of a player mean.
MprisState mprisState(const QVariantMap &properties);

/// The players on the session's bus. Each call ends by the deadline, whether the player answers or not, and
/// none is started by being asked. Blocks; any thread but the bus's own.
class MprisPlayers
{
public:
    MprisPlayers(const QDBusConnection &connection, const Deadline &deadline)
        : m_connection(connection)
        , m_deadline(deadline)
    { }

    /// The names of all players that are there; absent when the bus does not tell.
    std::optional<QStringList> services() const;
    std::optional<qint64> processOf(const QString &service) const;
    std::optional<MprisState> state(const QString &service) const;
    /// False when the player is not there, refuses or hangs.
    bool playPause(const QString &service) const;
    bool setPosition(const QString &service, const QString &track, double microseconds) const;

    /// The same players, with less time for each question.
    MprisPlayers within(double seconds) const { return {m_connection, m_deadline.within(seconds)}; }

private:
    QDBusMessage ask(const QString &service, const QString &path, const QString &interface,
        const QString &method, const QVariantList &arguments = {}) const;
    QDBusMessage askPlayer(
        const QString &service, const QString &method, const QVariantList &arguments = {}) const;

    QDBusConnection m_connection;
    Deadline m_deadline;
};

} // namespace brindle
