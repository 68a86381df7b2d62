#pragma once

#include "adapter/linux/Player.h"

#include <QDBusServiceWatcher>
#include <QSet>

#include <memory>
#include <vector>

namespace brindle::adapter {

/// All players on the bus, as they come and go.
class Players : public QObject
{
    Q_OBJECT

public:
    Players(const QDBusConnection &bus, Scheduler &scheduler);

    /// The one to follow; null where there is none.
    Player *chosen() const;
    /// The one of that number; null when it has quit.
    Player *withNumber(quint64 number) const;
    /// Whether the players that were there at first are found and have answered.
    bool haveAnswered() const;

Q_SIGNALS:
    /// A player came, went, or said something.
    void changed();

private Q_SLOTS:
    void takePropertiesChanged(const QDBusMessage &signal);
    void takeSeeked(const QDBusMessage &signal);

private:
    void look();
    void askForOwners(const QStringList &names);
    void meet(QList<Player::Address> found);
    void add(const Player::Address &address, PlayHistory::Arrival arrival);
    void remove(const QString &name);
    void takeOwnerChange(const QString &name, const QString &owner);

    QDBusConnection m_bus;
    Scheduler &m_scheduler;
    Turns m_turns;
    bool m_hasLooked = false;
    /// Names that changed hands during the first look, which may have seen them before.
    QSet<QString> m_changedMeanwhile;
    QDBusServiceWatcher m_watcher;
    std::vector<std::unique_ptr<Player>> m_players;
};

} // namespace brindle::adapter
