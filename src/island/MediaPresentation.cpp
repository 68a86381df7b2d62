#include "island/MediaPresentation.h"

namespace brindle {

MediaPresentation MediaPresentation::of(const NowPlayingTrack &track, const QImage &artwork)
{
    MediaPresentation result;
    result.title = track.title;
    result.isPlaying = track.isPlaying;
    // Where an address exists and leads nowhere, the place stays a placeholder.
    if (!artwork.isNull() || track.artworkURL)
        result.picture = artwork;
    else if (track.sourceIcon)
        result.picture = *track.sourceIcon;
    return result;
}

bool MediaPresentation::operator==(const MediaPresentation &other) const
{
    return title == other.title && isPlaying == other.isPlaying
        && picture.cacheKey() == other.picture.cacheKey();
}

} // namespace brindle
