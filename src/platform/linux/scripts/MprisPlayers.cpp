#include "platform/linux/scripts/MprisPlayers.h"

#include "platform/linux/dbus/BusMessages.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QRegularExpression>

#include <algorithm>

namespace brindle {

namespace {

const QString playerPath = QStringLiteral("/org/mpris/MediaPlayer2");
const QString playerInterface = QStringLiteral("org.mpris.MediaPlayer2.Player");

QVariantMap dictionary(const QVariant &value)
{
    const auto packed = bus::typed<QDBusArgument>(value);
    if (!packed || packed->currentSignature() != QStringLiteral("a{sv}"))
        return {};
    return qdbus_cast<QVariantMap>(*packed);
}

/// What is longer than anyone would call a thing is no name of it.
QString text(const QVariant &value)
{
    constexpr qsizetype longest = 0x10000;
    const QString text = bus::typed<QString>(value).value_or(QString());
    return text.size() <= longest ? text : QString();
}

QString people(const QVariant &value)
{
    const auto names = bus::typed<QStringList>(value);
    return names ? text(names->join(QStringLiteral(", "))) : text(value);
}

QString trackName(const QVariant &value)
{
    const auto path = bus::typed<QDBusObjectPath>(value);
    return path ? path->path() : text(value);
}

/// Some players name their tracks otherwise, and cannot be told one of them then.
bool isObjectPath(const QString &name)
{
    const QRegularExpression path(QRegularExpression::anchoredPattern(QStringLiteral("(?:/[A-Za-z0-9_]+)+")));
    return path.match(name).hasMatch();
}

/// Players differ in which type of number they send.
double number(const QVariant &value)
{
    switch (value.typeId()) {
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::Double:
        return value.toDouble();
    default:
        return 0;
    }
}

MprisState::Status status(const QString &text)
{
    if (text == u"Playing")
        return MprisState::Status::playing;
    return text == u"Paused" ? MprisState::Status::paused : MprisState::Status::stopped;
}

} // namespace

MprisState mprisState(const QVariantMap &properties)
{
    const QVariantMap metadata = dictionary(properties.value(QStringLiteral("Metadata")));
    MprisState state;
    state.status = status(text(properties.value(QStringLiteral("PlaybackStatus"))));
    state.title = text(metadata.value(QStringLiteral("xesam:title")));
    state.artist = people(metadata.value(QStringLiteral("xesam:artist")));
    state.album = text(metadata.value(QStringLiteral("xesam:album")));
    state.url = text(metadata.value(QStringLiteral("xesam:url")));
    state.artworkUrl = text(metadata.value(QStringLiteral("mpris:artUrl")));
    state.track = trackName(metadata.value(QStringLiteral("mpris:trackid")));
    if (const double process = number(metadata.value(QStringLiteral("kde:pid"))); process > 0)
        state.process = qint64(process);
    state.length = number(metadata.value(QStringLiteral("mpris:length")));
    state.position = number(properties.value(QStringLiteral("Position")));
    return state;
}

std::optional<QStringList> MprisPlayers::services() const
{
    const auto bus = QStringLiteral("org.freedesktop.DBus");
    const auto names =
        bus::argument(ask(bus, QStringLiteral("/org/freedesktop/DBus"), bus, QStringLiteral("ListNames")),
            QLatin1StringView("as"));
    if (!names)
        return std::nullopt;
    QStringList services = names->toStringList();
    services.removeIf([](const QString &name) { return !name.startsWith(u"org.mpris.MediaPlayer2."); });
    std::ranges::sort(services); // the bus has no order, and the choice must not waver
    return services;
}

std::optional<qint64> MprisPlayers::processOf(const QString &service) const
{
    const auto bus = QStringLiteral("org.freedesktop.DBus");
    const auto process = bus::argument(ask(bus, QStringLiteral("/org/freedesktop/DBus"), bus,
                                           QStringLiteral("GetConnectionUnixProcessID"), {service}),
        QLatin1StringView("u"));
    return process ? std::optional(qint64(process->toUInt())) : std::nullopt;
}

std::optional<MprisState> MprisPlayers::state(const QString &service) const
{
    const auto properties = bus::properties(
        ask(service, playerPath, bus::propertiesInterface, QStringLiteral("GetAll"), {playerInterface}));
    return properties ? std::optional(mprisState(*properties)) : std::nullopt;
}

bool MprisPlayers::playPause(const QString &service) const
{
    return askPlayer(service, QStringLiteral("PlayPause")).type() == QDBusMessage::ReplyMessage;
}

bool MprisPlayers::setPosition(const QString &service, const QString &track, double microseconds) const
{
    if (!isObjectPath(track))
        return false;
    return askPlayer(service, QStringLiteral("SetPosition"),
               {QVariant::fromValue(QDBusObjectPath(track)), QVariant::fromValue(qint64(microseconds))})
               .type()
        == QDBusMessage::ReplyMessage;
}

QDBusMessage MprisPlayers::askPlayer(
    const QString &service, const QString &method, const QVariantList &arguments) const
{
    return ask(service, playerPath, playerInterface, method, arguments);
}

QDBusMessage MprisPlayers::ask(const QString &service, const QString &path, const QString &interface,
    const QString &method, const QVariantList &arguments) const
{
    auto message = QDBusMessage::createMethodCall(service, path, interface, method);
    message.setArguments(arguments);
    message.setAutoStartService(false);
    return m_connection.call(message, QDBus::Block, std::max(m_deadline.milliseconds(), 1));
}

} // namespace brindle
