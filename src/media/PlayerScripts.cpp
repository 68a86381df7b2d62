#include "media/PlayerScripts.h"

#include "platform/ScriptRunner.h"

#include <QLocale>

#include <algorithm>
#include <cmath>

namespace brindle::PlayerScripts {

namespace {

QString address(const QString &player)
{
    return QStringLiteral("tell application id \"") + player + u'"';
}

/// Seconds in the unit that the player gives a track's length in.
double durationScale(const QString &player)
{
    return player == spotify ? 0.001 : 1.0;
}

std::optional<QUrl> url(const std::optional<QString> &text)
{
    QUrl url(text.value_or(QString()), QUrl::StrictMode);
    return url.isValid() ? std::optional(std::move(url)) : std::nullopt;
}

/// The shortest text that reads back as the same number, with a decimal point also where it is a whole one.
QString decimal(double value)
{
    constexpr double smallestPlain = 1e-4;
    constexpr double firstBeyondPlain = 1e16;
    if (value != 0 && !(value >= smallestPlain && value < firstBeyondPlain))
        return QString::number(value, 'e', QLocale::FloatingPointShortest);
    const QString text = QString::number(value, 'f', QLocale::FloatingPointShortest);
    return text.contains(u'.') ? text : text + QStringLiteral(".0");
}

} // namespace

QString nowPlaying(const QString &player)
{
    const QString artwork = player == spotify ? QStringLiteral(", artwork url of currentItem") : QString();
    return address(player)
        + QStringLiteral("\n"
                         "    if player state is stopped then return missing value\n"
                         "    set currentItem to current track\n"
                         "    return {name of currentItem, artist of currentItem, album of currentItem, "
                         "(duration of currentItem) as real, (player position) as real, "
                         "(player state) as text")
        + artwork + QStringLiteral("}\nend tell");
}

std::optional<NowPlayingTrack> track(const ScriptDescriptor &answer, const QString &player, Date now)
{
    constexpr qsizetype itemsWithoutArtwork = 6;
    const auto &items = answer.items;
    if (items.size() < itemsWithoutArtwork || items[0].stringValue.value_or(QString()).isEmpty())
        return std::nullopt;

    NowPlayingTrack track;
    track.title = *items[0].stringValue;
    track.artist = items[1].stringValue;
    track.album = items[2].stringValue;
    if (items[3].doubleValue > 0)
        track.duration = items[3].doubleValue * durationScale(player);
    track.elapsed = items[4].doubleValue;
    track.elapsedUpdatedAt = now;
    track.isPlaying = items[5].stringValue.value_or(QString()).toLower() == u"playing";
    if (items.size() > itemsWithoutArtwork)
        track.artworkURL = url(items[itemsWithoutArtwork].stringValue);
    track.sourceName = player == spotify ? QStringLiteral("Spotify") : QStringLiteral("Music");
    track.sourceBundleIdentifier = player;
    return track;
}

QString togglePlayback(const QString &player)
{
    return address(player) + QStringLiteral(" to playpause");
}

QString seek(double seconds, const QString &player)
{
    return address(player) + QStringLiteral(" to set player position to ") + decimal(std::max(seconds, 0.0));
}

} // namespace brindle::PlayerScripts
