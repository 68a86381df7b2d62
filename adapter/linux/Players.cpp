#include "adapter/linux/Players.h"

#include "platform/linux/dbus/BusMessages.h"

#include <algorithm>
#include <memory>
#include <utility>

namespace brindle::adapter {

namespace {

using namespace Qt::StringLiterals;

/// Stands in for whichever player it thinks is the one; it would be followed as a second player.
const QString proxyName = Player::namePrefix + u"playerctld"_s;

bool isPlayer(const QString &name)
{
    return name.size() > Player::namePrefix.size() && name.startsWith(Player::namePrefix)
        && name != proxyName;
}

QDBusMessage busCall(const QString &method)
{
    return QDBusMessage::createMethodCall(
        u"org.freedesktop.DBus"_s, u"/org/freedesktop/DBus"_s, u"org.freedesktop.DBus"_s, method);
}

/// The bus counts its connections: in ":1.42" this is 42.
qulonglong age(const Player::Address &address)
{
    return address.owner.section(u'.', -1).toULongLong();
}

} // namespace

Players::Players(const QDBusConnection &bus, Scheduler &scheduler)
    : m_bus(bus)
    , m_scheduler(scheduler)
    , m_watcher(Player::namePrefix.chopped(1) + u'*', bus, QDBusServiceWatcher::WatchForOwnerChange)
{
    // From here on nothing is missed, so what the bus answers below may be older than what is known then.
    connect(&m_watcher, &QDBusServiceWatcher::serviceOwnerChanged, this,
        [this](const QString &name, const QString &, const QString &owner) { takeOwnerChange(name, owner); });
    m_bus.connect(QString(), Player::path, bus::propertiesInterface, u"PropertiesChanged"_s,
        QStringList{Player::interface}, QString(), this, SLOT(takePropertiesChanged(QDBusMessage)));
    m_bus.connect(
        QString(), Player::path, Player::interface, u"Seeked"_s, this, SLOT(takeSeeked(QDBusMessage)));
    look();
}

void Players::look()
{
    bus::call(m_bus, busCall(u"ListNames"_s), this, [this](const QDBusMessage &reply) {
        const auto names = bus::argument(reply, "as"_L1);
        QStringList players = names ? names->toStringList() : QStringList();
        players.removeIf([](const QString &name) { return !isPlayer(name); });
        askForOwners(players);
    });
}

void Players::askForOwners(const QStringList &names)
{
    if (names.isEmpty()) {
        meet({});
        return;
    }
    struct Round
    {
        qsizetype open;
        QList<Player::Address> found;
    };
    const auto round = std::make_shared<Round>(Round{names.size(), {}});
    for (const QString &name : names) {
        QDBusMessage question = busCall(u"GetNameOwner"_s);
        question << name;
        bus::call(m_bus, question, this, [this, name, round](const QDBusMessage &reply) {
            if (const auto owner = bus::argument(reply, "s"_L1))
                round->found.append({name, owner->toString()});
            if (--round->open == 0)
                meet(round->found);
        });
    }
}

void Players::meet(QList<Player::Address> found)
{
    // Nobody can say which of them began to play last; the youngest is the best guess.
    std::sort(found.begin(), found.end(),
        [](const Player::Address &one, const Player::Address &other) { return age(one) < age(other); });
    for (const Player::Address &address : std::as_const(found)) {
        if (!m_changedMeanwhile.contains(address.name))
            add(address, PlayHistory::Arrival::wasThere);
    }
    m_changedMeanwhile.clear();
    m_hasLooked = true;
    Q_EMIT changed();
}

void Players::add(const Player::Address &address, PlayHistory::Arrival arrival)
{
    m_players.push_back(std::make_unique<Player>(address, m_bus, m_scheduler, PlayerModel(m_turns, arrival)));
    connect(m_players.back().get(), &Player::changed, this, &Players::changed);
}

void Players::remove(const QString &name)
{
    std::erase_if(m_players, [&name](const auto &player) { return player->address().name == name; });
}

void Players::takeOwnerChange(const QString &name, const QString &owner)
{
    if (!isPlayer(name))
        return;
    if (!m_hasLooked)
        m_changedMeanwhile.insert(name);
    remove(name);
    if (!owner.isEmpty())
        add({name, owner}, PlayHistory::Arrival::came);
    Q_EMIT changed();
}

void Players::takePropertiesChanged(const QDBusMessage &signal)
{
    for (const auto &player : m_players) {
        if (player->address().owner == signal.service())
            player->takePropertiesChanged(signal);
    }
}

void Players::takeSeeked(const QDBusMessage &signal)
{
    for (const auto &player : m_players) {
        if (player->address().owner == signal.service())
            player->takeSeeked(signal);
    }
}

Player *Players::chosen() const
{
    QList<Player *> known;
    QList<Candidate> candidates;
    for (const auto &player : m_players) {
        if (player->model().isKnown()) {
            known.append(player.get());
            candidates.append(player->model().candidate());
        }
    }
    const auto index = choose(candidates);
    return index ? known.at(*index) : nullptr;
}

Player *Players::withNumber(quint64 number) const
{
    const auto found = std::find_if(m_players.cbegin(), m_players.cend(),
        [number](const auto &player) { return player->number() == number; });
    return found == m_players.cend() ? nullptr : found->get();
}

bool Players::haveAnswered() const
{
    return m_hasLooked && std::all_of(m_players.cbegin(), m_players.cend(), [](const auto &player) {
        return player->hasAnswered();
    });
}

} // namespace brindle::adapter
