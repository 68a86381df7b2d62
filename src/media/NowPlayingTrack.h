#pragma once

#include "foundation/Date.h"

#include <QImage>
#include <QString>
#include <QUrl>

#include <optional>

namespace brindle {

/// What plays, with its position, source and artwork. A plain value; images are shared, not copied.
struct NowPlayingTrack
{
    QString title;
    std::optional<QString> artist;
    std::optional<QString> album;
    /// Seconds.
    std::optional<double> duration;
    /// Seconds at the moment `elapsedUpdatedAt`.
    std::optional<double> elapsed;
    Date elapsedUpdatedAt;
    bool isPlaying = false;
    double playbackRate = 1;
    std::optional<QImage> artwork;
    /// A hash of the artwork's bytes, so that pictures need not be compared.
    std::optional<quint64> artworkFingerprint;
    std::optional<QUrl> artworkURL;
    std::optional<QString> sourceName;
    std::optional<QImage> sourceIcon;
    std::optional<QString> sourceBundleIdentifier;

    /// Names the source, not the song.
    QString sessionKey() const;
    /// Names the song as it is presented: it changes when the song does.
    QString presentationID() const;

    /// Whether a viewer would tell them apart: pictures, the icon and the time of the position take no part.
    bool operator==(const NowPlayingTrack &other) const;
};

/// The position at `now`, in seconds: never below 0 nor beyond the track's duration. What every display of
/// progress shows.
double currentElapsed(const NowPlayingTrack &track, Date now);

} // namespace brindle
