#include "island/MediaPresentation.h"

namespace brindle {

MediaPresentation MediaPresentation::of(const NowPlayingTrack &track)
{
    MediaPresentation result;
    result.title = track.title;
    result.isPlaying = track.isPlaying;
    // The first that exists counts. Where an address exists and leads nowhere, the place stays a placeholder.
    if (track.artwork)
        result.picture = *track.artwork;
    else if (track.artworkURL)
        result.artworkURL = *track.artworkURL;
    else if (track.sourceIcon)
        result.picture = *track.sourceIcon;
    return result;
}

bool MediaPresentation::operator==(const MediaPresentation &other) const
{
    return title == other.title && isPlaying == other.isPlaying
        && picture.cacheKey() == other.picture.cacheKey() && artworkURL == other.artworkURL;
}

} // namespace brindle
