#pragma once

#include "media/NowPlayingTrack.h"

#include <optional>

namespace brindle {

/// What the desktop says of the application that a track comes from.
struct SourceApplication
{
    QImage icon;
    std::optional<QString> name;
};

/// One source of what plays: its last track, and when it was last heard of.
struct MediaSession
{
    NowPlayingTrack track;
    /// When the source last reported, or was last told something from here.
    Date observedAt;
    /// When it was last known to play; for one that never did, when it was first heard of.
    Date lastPlayedAt;
    /// Kept from the first time that it was needed, for as long as the source is known.
    std::optional<SourceApplication> application;
};

/// A press of play or pause, shown before the source has followed it.
struct PlaybackOverride
{
    QString key; ///< of the session
    bool isPlaying = false;
    /// Seconds, at `issuedAt`.
    double anchorElapsed = 0;
    Date issuedAt;
    Date expiresAt;

    /// Makes of a report what would be reported if the source had followed already.
    void impose(NowPlayingTrack &track, Date now) const;
};

/// A seek, shown before the source has followed it.
struct PositionOverride
{
    QString key; ///< of the session
    QString presentationID;
    /// Seconds, at `issuedAt`.
    double targetElapsed = 0;
    Date issuedAt;
    Date expiresAt;

    /// Whether a report needs no correction any more: it is of another song, the time is up, or it is near
    /// enough to where the track should be.
    bool isSettledBy(const NowPlayingTrack &track, Date now) const;
    /// Puts a report of the old position where the track should be.
    void impose(NowPlayingTrack &track, Date now) const;

private:
    double expectedElapsed(const NowPlayingTrack &track, Date now) const;
};

} // namespace brindle
