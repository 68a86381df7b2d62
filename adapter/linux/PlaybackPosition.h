#pragma once

#include "foundation/Date.h"

#include <optional>

namespace brindle::adapter {

/// Where in its track a player is, as far as that follows from what it said and when.
///
/// Between two sayings the position runs on with the speed. A player never says that its position moves on,
/// only that it jumped, so the position is worth telling again only when it left the course that it was on.
class PlaybackPosition
{
public:
    struct Anchor
    {
        /// Seconds from the start of the track, 0 or above.
        double elapsed;
        /// When that was so.
        Date at;
    };

    /// Seconds by which a reading may be off the course before it counts as having left it: players round,
    /// and answer late.
    static constexpr double tolerance = 0.25;

    /// Absent where the player does not tell.
    const std::optional<Anchor> &anchor() const { return m_anchor; }
    /// Changes whenever the anchor that held before would lead astray.
    int course() const { return m_course; }
    /// Changes with each event that may move the position: a track's start, a new speed, a jump. What follows
    /// such an event is a guess until the next reading.
    int events() const { return m_events; }

    /// Another track. It begins at its start, for all that is known.
    void beginTrack(Date now);
    /// Seconds of the track in a second of time; 0 while it stands.
    void setSpeed(double speed, Date now);
    void jump(double elapsed, Date now);
    /// What the player answered when it was asked.
    void read(std::optional<double> elapsed, Date now);

private:
    double extrapolated(Date now) const;
    void leaveFor(double elapsed, Date now);

    std::optional<Anchor> m_anchor;
    double m_speed = 0;
    bool m_isGuess = false;
    int m_course = 0;
    int m_events = 0;
};

} // namespace brindle::adapter
