#include "media/MediaSession.h"

#include <algorithm>
#include <cmath>

namespace brindle {

namespace {

/// Seconds by which a source may miss the target of a seek and have followed it all the same.
constexpr double seekTolerance = 1.25;

} // namespace

void PlaybackOverride::impose(NowPlayingTrack &track, Date now) const
{
    track.isPlaying = isPlaying;
    track.elapsed = isPlaying ? anchorElapsed + std::max(now - issuedAt, 0.0) : anchorElapsed;
    track.playbackRate = isPlaying ? std::max(1.0, track.playbackRate) : 0;
    track.elapsedUpdatedAt = now;
}

bool PositionOverride::isSettledBy(const NowPlayingTrack &track, Date now) const
{
    return track.presentationID() != presentationID || now >= expiresAt
        || std::abs(currentElapsed(track, now) - expectedElapsed(track, now)) <= seekTolerance;
}

void PositionOverride::impose(NowPlayingTrack &track, Date now) const
{
    const double expected = expectedElapsed(track, now);
    track.elapsed = track.duration ? std::min(expected, *track.duration) : expected;
    track.elapsedUpdatedAt = now;
}

double PositionOverride::expectedElapsed(const NowPlayingTrack &track, Date now) const
{
    // A source that says it plays and gives no rate plays at the usual one.
    return track.isPlaying ? targetElapsed + std::max(1.0, track.playbackRate) * std::max(now - issuedAt, 0.0)
                           : targetElapsed;
}

} // namespace brindle
