#include "adapter/linux/PlaybackPosition.h"

#include <algorithm>
#include <cmath>

namespace brindle::adapter {

double PlaybackPosition::extrapolated(Date now) const
{
    return std::max(m_anchor->elapsed + m_speed * (now - m_anchor->at), 0.0);
}

void PlaybackPosition::leaveFor(double elapsed, Date now)
{
    m_anchor = {std::max(elapsed, 0.0), now};
    ++m_course;
}

void PlaybackPosition::beginTrack(Date now)
{
    ++m_events;
    // Of a player that has never told its position nothing is known here either.
    if (!m_anchor)
        return;
    leaveFor(0, now);
    m_isGuess = true;
}

void PlaybackPosition::setSpeed(double speed, Date now)
{
    if (speed == m_speed)
        return;
    ++m_events;
    if (m_anchor) {
        leaveFor(extrapolated(now), now);
        m_isGuess = true;
    }
    m_speed = speed;
}

void PlaybackPosition::jump(double elapsed, Date now)
{
    ++m_events;
    leaveFor(elapsed, now);
    m_isGuess = false;
}

void PlaybackPosition::read(std::optional<double> elapsed, Date now)
{
    if (!elapsed) {
        if (m_anchor)
            ++m_course;
        m_anchor.reset();
    } else if (!m_anchor || std::abs(*elapsed - extrapolated(now)) >= tolerance) {
        leaveFor(*elapsed, now);
    } else if (m_isGuess) {
        m_anchor = {*elapsed, now};
    }
    m_isGuess = false;
}

} // namespace brindle::adapter
