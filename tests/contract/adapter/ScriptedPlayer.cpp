#include "contract/adapter/ScriptedPlayer.h"

#include "support/dbus/PrivateBus.h"

#include <QDBusObjectPath>
#include <QDBusVariant>

#include <utility>

namespace brindle::test {

namespace {

using namespace Qt::StringLiterals;

const QString path = u"/org/mpris/MediaPlayer2"_s;
const QString playerInterface = u"org.mpris.MediaPlayer2.Player"_s;
const QString propertiesInterface = u"org.freedesktop.DBus.Properties"_s;
constexpr double microseconds = 1e6;

QString freshName()
{
    static int count = 0;
    return u"player %1"_s.arg(++count);
}

QString textOf(const QVariant &argument)
{
    const auto object = argument.metaType() == QMetaType::fromType<QDBusObjectPath>();
    return object ? argument.value<QDBusObjectPath>().path() : argument.toString();
}

} // namespace

ScriptedPlayer::ScriptedPlayer(const PrivateBus &bus, const QString &name)
    : m_name(u"org.mpris.MediaPlayer2."_s + name)
    , m_connection(QDBusConnection::connectToBus(bus.address(), freshName()))
{
    properties = {{u"PlaybackStatus"_s, u"Stopped"_s}, {u"Rate"_s, 1.0}, {u"CanPlay"_s, true},
        {u"CanPause"_s, true}, {u"Metadata"_s, QVariantMap()}};
    application = {{u"DesktopEntry"_s, name}, {u"Identity"_s, name}};
    m_connection.registerVirtualObject(path, this);
}

ScriptedPlayer::~ScriptedPlayer()
{
    quit();
}

void ScriptedPlayer::appear()
{
    m_connection.registerService(m_name);
}

void ScriptedPlayer::appearPlaying(const QString &title)
{
    play(title);
    appear();
}

void ScriptedPlayer::quit()
{
    // Otherwise the library's thread may still hand a message to what is gone.
    m_connection.unregisterObject(path);
    const QString name = m_connection.name();
    // The connection ends with its last user.
    m_connection = QDBusConnection(QString());
    QDBusConnection::disconnectFromBus(name);
}

void ScriptedPlayer::behave(Behaviour behaviour)
{
    m_behaviour = behaviour;
    if (behaviour == Behaviour::hangs)
        return;
    for (const QDBusMessage &message : std::exchange(m_waiting, {}))
        answer(message);
}

void ScriptedPlayer::change(const QVariantMap &changed)
{
    setPosition(position().toDouble() / microseconds);
    properties.insert(changed);
    tell(changed);
}

void ScriptedPlayer::tell(const QVariantMap &changed)
{
    signal(propertiesInterface, u"PropertiesChanged"_s, {playerInterface, changed, QStringList()});
}

void ScriptedPlayer::signal(
    const QString &interface, const QString &name, const QVariantList &arguments) const
{
    QDBusMessage message = QDBusMessage::createSignal(path, interface, name);
    message.setArguments(arguments);
    m_connection.send(message);
}

void ScriptedPlayer::setPosition(double seconds)
{
    m_position = seconds;
    m_positionAt = m_time.uptime();
}

void ScriptedPlayer::jump(double seconds)
{
    setPosition(seconds);
    signal(playerInterface, u"Seeked"_s, {qlonglong(seconds * microseconds)});
}

void ScriptedPlayer::play(const QString &title)
{
    setPosition(0);
    change({{u"Metadata"_s, track(title)}, {u"PlaybackStatus"_s, u"Playing"_s}});
}

void ScriptedPlayer::setStatus(const QString &status)
{
    change({{u"PlaybackStatus"_s, status}});
}

void ScriptedPlayer::setMetadata(const QVariantMap &metadata)
{
    change({{u"Metadata"_s, metadata}});
}

QVariant ScriptedPlayer::position() const
{
    const bool runs = properties.value(u"PlaybackStatus"_s) == u"Playing"_s;
    const double speed = runs ? properties.value(u"Rate"_s).toDouble() : 0;
    return qlonglong((m_position + speed * (m_time.uptime() - m_positionAt)) * microseconds);
}

QVariantMap ScriptedPlayer::playerProperties() const
{
    QVariantMap all = properties;
    if (!all.contains(u"Position"_s))
        all.insert(u"Position"_s, position());
    return all;
}

bool ScriptedPlayer::handleMessage(const QDBusMessage &message, const QDBusConnection & /*connection*/)
{
    if (m_behaviour == Behaviour::hangs)
        m_waiting.append(message);
    else
        answer(message);
    return true;
}

void ScriptedPlayer::answer(const QDBusMessage &message)
{
    const QString asked = message.arguments().value(0).toString();
    if (message.interface() == playerInterface) {
        QStringList words{message.member()};
        for (const QVariant &argument : message.arguments())
            words << textOf(argument);
        commands << words.join(u' ');
    }
    if (m_behaviour == Behaviour::refuses || refused.contains(message.member()))
        m_connection.send(message.createErrorReply(QDBusError::Failed, u"no"_s));
    else if (message.member() == u"GetAll" && m_behaviour == Behaviour::babbles)
        m_connection.send(message.createReply(7));
    else if (message.member() == u"GetAll")
        m_connection.send(message.createReply(asked == playerInterface ? playerProperties() : application));
    else if (message.member() == u"Get")
        m_connection.send(message.createReply(QVariant::fromValue(
            QDBusVariant(playerProperties().value(message.arguments().value(1).toString())))));
    else
        m_connection.send(message.createReply());
}

QString ScriptedPlayer::introspect(const QString & /*path*/) const
{
    return {};
}

QVariantMap track(const QString &title)
{
    const QString id = u"/track/"_s + QString::fromLatin1(title.toUtf8().toHex());
    return {{u"mpris:trackid"_s, QVariant::fromValue(QDBusObjectPath(id))}, {u"xesam:title"_s, title},
        {u"xesam:artist"_s, QStringList{u"Ann"_s}}, {u"xesam:album"_s, u"Album"_s},
        {u"mpris:length"_s, 200'000'000LL}};
}

} // namespace brindle::test
