#include "adapter/linux/PlayerProperties.h"

#include <QDBusArgument>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QRegularExpression>

#include <algorithm>
#include <array>
#include <cmath>

namespace brindle::adapter::PlayerProperties {

namespace {

using namespace Qt::StringLiterals;

/// In a second.
constexpr double microseconds = 1e6;
/// What is longer is a live stream's way of saying that it has no length.
constexpr double longestTrack = 366 * 86400.0;
constexpr double fastest = 100;
/// Text beyond this many characters is no title any more.
constexpr qsizetype longestText = 4096;
/// Room for 16 MiB in Base64, and what stands before it.
constexpr qsizetype longestAddress = qsizetype(24) * 1024 * 1024;

/// Some players wrap a value twice.
QVariant unwrapped(QVariant value)
{
    for (int depth = 0; depth < 4 && value.metaType() == QMetaType::fromType<QDBusVariant>(); ++depth)
        value = value.value<QDBusVariant>().variant();
    return value;
}

std::optional<double> number(const QVariant &raw)
{
    constexpr std::array numeric{QMetaType::Int, QMetaType::UInt, QMetaType::LongLong, QMetaType::ULongLong,
        QMetaType::Short, QMetaType::UShort, QMetaType::UChar, QMetaType::Double};
    const QVariant value = unwrapped(raw);
    if (std::find(numeric.begin(), numeric.end(), value.typeId()) == numeric.end())
        return std::nullopt;
    const double result = value.toDouble();
    return std::isfinite(result) ? std::optional(result) : std::nullopt;
}

std::optional<bool> truth(const QVariant &raw)
{
    const QVariant value = unwrapped(raw);
    return value.typeId() == QMetaType::Bool ? std::optional(value.toBool()) : std::nullopt;
}

QString cut(QString text)
{
    if (text.size() > longestText)
        text.truncate(text.at(longestText - 1).isHighSurrogate() ? longestText - 1 : longestText);
    return text;
}

/// One text, also where the player sends a list of them.
QString text(const QVariant &raw)
{
    const QVariant value = unwrapped(raw);
    QString result;
    if (value.typeId() == QMetaType::QString)
        result = value.toString();
    else if (value.typeId() == QMetaType::QStringList) {
        QStringList parts = value.toStringList();
        parts.removeIf([](const QString &part) { return part.trimmed().isEmpty(); });
        result = parts.join(u", "_s);
    }
    return result.trimmed().isEmpty() ? QString() : cut(result);
}

QByteArray address(const QVariant &raw)
{
    const QVariant value = unwrapped(raw);
    const QString written = value.typeId() == QMetaType::QString ? value.toString() : QString();
    return written.size() <= longestAddress ? written.toUtf8() : QByteArray();
}

/// Some players send the path as a plain string, and some that are no path.
QString trackId(const QVariant &raw)
{
    static const QRegularExpression path(u"^(/[A-Za-z0-9_]+)+$"_s);
    static const QString noTrack = u"/org/mpris/MediaPlayer2/TrackList/NoTrack"_s;
    const QVariant value = unwrapped(raw);
    const QString id = value.metaType() == QMetaType::fromType<QDBusObjectPath>()
        ? value.value<QDBusObjectPath>().path()
        : value.typeId() == QMetaType::QString ? value.toString()
                                               : QString();
    return id != noTrack && id.size() <= longestText && path.match(id).hasMatch() ? id : QString();
}

/// What a desktop shows of a file without a title.
QString fileName(const QByteArray &url)
{
    if (!url.startsWith("file:"))
        return {};
    const QByteArray last = url.mid(url.lastIndexOf('/') + 1);
    return text(QString::fromUtf8(QByteArray::fromPercentEncoding(last)));
}

std::optional<double> duration(const QVariant &value)
{
    const auto length = number(value);
    if (!length || *length <= 0 || *length / microseconds > longestTrack)
        return std::nullopt;
    return *length / microseconds;
}

QVariantMap metadata(const QVariant &raw)
{
    const QVariant value = unwrapped(raw);
    if (value.metaType() == QMetaType::fromType<QDBusArgument>()) {
        const auto argument = value.value<QDBusArgument>();
        return argument.currentSignature() == u"a{sv}" ? qdbus_cast<QVariantMap>(argument) : QVariantMap();
    }
    return value.typeId() == QMetaType::QVariantMap ? value.toMap() : QVariantMap();
}

Track track(const QVariantMap &metadata)
{
    Track track;
    track.id = trackId(metadata.value(u"mpris:trackid"_s));
    track.url = address(metadata.value(u"xesam:url"_s));
    track.title = text(metadata.value(u"xesam:title"_s));
    if (track.title.isEmpty())
        track.title = fileName(track.url);
    track.artist = text(metadata.value(u"xesam:artist"_s));
    if (track.artist.isEmpty())
        track.artist = text(metadata.value(u"xesam:albumArtist"_s));
    track.album = text(metadata.value(u"xesam:album"_s));
    track.duration = duration(metadata.value(u"mpris:length"_s));
    track.artworkAddress = address(metadata.value(u"mpris:artUrl"_s));
    return track;
}

PlaybackStatus status(const QVariant &raw)
{
    const QVariant value = unwrapped(raw);
    const QString word = value.typeId() == QMetaType::QString ? value.toString() : QString();
    return word == u"Playing" ? PlaybackStatus::playing
        : word == u"Paused"   ? PlaybackStatus::paused
                              : PlaybackStatus::stopped;
}

double rate(const QVariant &value)
{
    const double said = number(value).value_or(1);
    return said > 0 && said <= fastest ? said : 1;
}

const QString statusKey = u"PlaybackStatus"_s;
const QString positionKey = u"Position"_s;

} // namespace

void merge(PlayerState &state, const QVariantMap &properties)
{
    if (properties.contains(statusKey))
        state.status = status(properties.value(statusKey));
    if (const auto said = properties.constFind(u"Rate"_s); said != properties.cend())
        state.rate = rate(*said);
    if (const auto said = properties.constFind(u"CanPlay"_s); said != properties.cend())
        state.canPlay = truth(*said).value_or(true);
    if (const auto said = properties.constFind(u"CanPause"_s); said != properties.cend())
        state.canPause = truth(*said).value_or(true);
    if (const auto said = properties.constFind(u"Metadata"_s); said != properties.cend())
        state.track = track(metadata(*said));
}

bool speakOfStatus(const QVariantMap &properties)
{
    return properties.contains(statusKey);
}

bool speakOfPosition(const QVariantMap &properties)
{
    return properties.contains(positionKey);
}

std::optional<double> position(const QVariantMap &properties)
{
    return position(properties.value(positionKey));
}

std::optional<double> position(const QVariant &value)
{
    const auto said = number(value);
    if (!said || *said / microseconds > longestTrack)
        return std::nullopt;
    return std::max(*said / microseconds, 0.0);
}

} // namespace brindle::adapter::PlayerProperties
