#include "adapter/linux/Player.h"

#include "adapter/linux/PlayerProperties.h"
#include "platform/linux/dbus/BusMessages.h"

#include <QDBusObjectPath>
#include <QFile>
#include <QStandardPaths>

#include <algorithm>
#include <cmath>
#include <utility>

namespace brindle::adapter {

namespace {

using namespace Qt::StringLiterals;

/// Seconds after which a question that was not answered no longer keeps others from being asked.
constexpr double patience = 2;
/// Seconds between two questions, however fast a player changes.
constexpr double rest = 0.02;

quint64 nextNumber()
{
    static quint64 last = 0;
    return ++last;
}

bool isInstalled(const QString &id)
{
    return !QStandardPaths::locate(QStandardPaths::ApplicationsLocation, id + u".desktop"_s).isEmpty();
}

qlonglong microseconds(double seconds)
{
    return std::llround(seconds * 1e6);
}

bool isError(const QDBusMessage &reply)
{
    return reply.type() == QDBusMessage::ErrorMessage;
}

} // namespace

Player::Player(const Address &address, const QDBusConnection &bus, Scheduler &scheduler,
    const PlayerModel &model, QObject *parent)
    : QObject(parent)
    , m_address(address)
    , m_bus(bus)
    , m_scheduler(scheduler)
    , m_number(nextNumber())
    , m_model(model)
{
    ask();
    askForOrigin();
}

// Its unique name cannot be started by the bus, and is never somebody else's.
QDBusMessage Player::call(
    const QString &ofInterface, const QString &method, const QVariantList &arguments) const
{
    QDBusMessage message = QDBusMessage::createMethodCall(m_address.owner, path, ofInterface, method);
    message.setArguments(arguments);
    return message;
}

void Player::refresh()
{
    const double age = m_scheduler.uptime() - m_askedAt;
    if (m_isAsked && age < patience)
        m_hasToAskAgain = true;
    else if (age >= rest)
        ask();
    else if (!m_nextQuestion.isPending())
        m_nextQuestion = m_scheduler.after(rest - age, [this] { ask(); });
}

void Player::ask()
{
    m_isAsked = true;
    m_hasToAskAgain = false;
    m_askedAt = m_scheduler.uptime();
    bus::call(m_bus, call(bus::propertiesInterface, u"GetAll"_s, {interface}), this,
        [this](const QDBusMessage &reply) { takeAnswer(reply); });
}

void Player::takeAnswer(const QDBusMessage &reply)
{
    m_isAsked = false;
    m_hasToldProperties = true;
    if (const auto properties = bus::properties(reply))
        m_model.answered(*properties, m_scheduler.now());
    if (m_hasToAskAgain)
        refresh();
    Q_EMIT changed();
}

void Player::askForOrigin()
{
    PlayerOrigin origin;
    origin.nameBelow = m_address.name.mid(namePrefix.size());
    m_bundleIdentifier = applicationIdentifier(origin, isInstalled);
    bus::call(m_bus, call(bus::propertiesInterface, u"GetAll"_s, {u"org.mpris.MediaPlayer2"_s}), this,
        [this, origin](const QDBusMessage &reply) mutable {
            const auto properties = bus::properties(reply).value_or(QVariantMap());
            origin.desktopEntry = properties.value(u"DesktopEntry"_s).toString();
            if (namedDesktopEntry(origin.desktopEntry).isEmpty())
                askForExecutable(origin);
            else
                takeOrigin(origin);
        });
}

void Player::askForExecutable(PlayerOrigin origin)
{
    auto question = QDBusMessage::createMethodCall(u"org.freedesktop.DBus"_s, u"/org/freedesktop/DBus"_s,
        u"org.freedesktop.DBus"_s, u"GetConnectionUnixProcessID"_s);
    question << m_address.owner;
    bus::call(m_bus, question, this, [this, origin = std::move(origin)](const QDBusMessage &reply) mutable {
        if (const auto process = bus::argument(reply, "u"_L1))
            origin.executable = QFile::symLinkTarget(u"/proc/%1/exe"_s.arg(process->toUInt()));
        takeOrigin(origin);
    });
}

void Player::takeOrigin(const PlayerOrigin &origin)
{
    m_hasToldOrigin = true;
    m_bundleIdentifier = applicationIdentifier(origin, isInstalled);
    Q_EMIT changed();
}

void Player::takePropertiesChanged(const QDBusMessage &signal)
{
    const auto change = bus::propertiesChange(signal);
    if (!change || change->interface != interface)
        return;
    m_model.changed(change->changed, m_scheduler.now());
    // The position is never in it, and some players leave out more than that.
    refresh();
    Q_EMIT changed();
}

void Player::takeSeeked(const QDBusMessage &signal)
{
    const auto value = bus::argument(signal, "x"_L1);
    if (const auto seconds = value ? PlayerProperties::position(*value) : std::nullopt)
        m_model.jumped(*seconds, m_scheduler.now());
    refresh();
    Q_EMIT changed();
}

void Player::tell(const QString &method, const QVariantList &arguments, const Done &done)
{
    bus::call(m_bus, call(interface, method, arguments), this, [this, done](const QDBusMessage &reply) {
        // Not every player says what came of it.
        refresh();
        done(!isError(reply));
    });
}

void Player::send(Command command, const Done &done)
{
    tell(methodOf(command, m_model.state()), {}, done);
}

void Player::seek(double seconds, const Done &done)
{
    const Track &track = m_model.state().track;
    // What lies behind the end is ignored by players.
    const double target = std::min(seconds, track.duration.value_or(seconds));
    if (track.id.isEmpty()) {
        seekBy(target, done);
        return;
    }
    tell(u"SetPosition"_s, {QVariant::fromValue(QDBusObjectPath(track.id)), microseconds(target)},
        [this, target, done](bool isThrough) {
            if (isThrough)
                done(true);
            else
                seekBy(target, done);
        });
}

void Player::seekBy(double target, const Done &done)
{
    const auto question = call(bus::propertiesInterface, u"Get"_s, {interface, u"Position"_s});
    bus::call(m_bus, question, this, [this, target, done](const QDBusMessage &reply) {
        const auto value = bus::argument(reply, "v"_L1);
        if (const auto position = value ? PlayerProperties::position(*value) : std::nullopt)
            tell(u"Seek"_s, {microseconds(target - *position)}, done);
        else
            done(false);
    });
}

QString methodOf(Command command, const PlayerState &state)
{
    switch (command) {
    case Command::play:
        return !state.canPlay && state.canPause && !state.isPlaying() ? u"PlayPause"_s : u"Play"_s;
    case Command::pause:
        return !state.canPause && state.canPlay && state.isPlaying() ? u"PlayPause"_s : u"Pause"_s;
    case Command::next:
        return u"Next"_s;
    case Command::previous:
        return u"Previous"_s;
    }
    Q_UNREACHABLE();
}

} // namespace brindle::adapter
