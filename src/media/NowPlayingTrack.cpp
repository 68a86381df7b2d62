#include "media/NowPlayingTrack.h"

#include <QStringList>

#include <algorithm>

namespace brindle {

QString NowPlayingTrack::sessionKey() const
{
    if (sourceBundleIdentifier)
        return *sourceBundleIdentifier;
    return sourceName ? *sourceName : title + u'|' + artist.value_or(QString());
}

QString NowPlayingTrack::presentationID() const
{
    const QString source = sourceBundleIdentifier ? *sourceBundleIdentifier
                                                  : sourceName.value_or(QStringLiteral("unknown-source"));
    return QStringList{source, title, artist.value_or(QString()), album.value_or(QString()),
        artworkURL ? artworkURL->toString() : QString()}
        .join(u'|');
}

bool NowPlayingTrack::operator==(const NowPlayingTrack &other) const
{
    return title == other.title && artist == other.artist && album == other.album
        && duration == other.duration && elapsed == other.elapsed && isPlaying == other.isPlaying
        && playbackRate == other.playbackRate && artworkFingerprint == other.artworkFingerprint
        && artworkURL == other.artworkURL && sourceName == other.sourceName
        && sourceBundleIdentifier == other.sourceBundleIdentifier
        && artwork.has_value() == other.artwork.has_value();
}

double currentElapsed(const NowPlayingTrack &track, Date now)
{
    double position = track.elapsed.value_or(0);
    if (track.isPlaying)
        position += std::max(track.playbackRate, 0.0) * std::max(now - track.elapsedUpdatedAt, 0.0);
    position = std::max(0.0, position); // in this order, what is no number becomes 0
    return track.duration ? std::min(position, *track.duration) : position;
}

} // namespace brindle
