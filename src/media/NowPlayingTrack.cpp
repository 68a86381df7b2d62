#include "media/NowPlayingTrack.h"

#include <QStringList>

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

} // namespace brindle
