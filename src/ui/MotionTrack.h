#pragma once

#include "ui/Motion.h"
#include "ui/Spring.h"

namespace brindle {

/// One number on its way to a target. It is stepped by its owner and knows no clock.
///
/// A new target keeps position and velocity. Once the value is nearer to the target than `precision` and slow
/// enough to stay there, it is set to the target exactly and the track has settled.
class MotionTrack
{
public:
    explicit MotionTrack(double value = 0, double precision = 0.001);

    double value() const { return m_value; }
    double target() const { return m_target; }
    /// Units a second.
    double velocity() const { return m_velocity; }
    bool isMoving() const { return m_isMoving; }

    /// Goes to `target` by `motion` from here on. One that goes there already, or has settled there, keeps as
    /// it is.
    void retarget(double target, const Motion &motion);
    /// Is at `value` and rests there.
    void jump(double value);
    void advance(double seconds);

private:
    void advanceSpring(double seconds);
    void advanceEase(double seconds);

    double m_precision;
    double m_value;
    double m_target;
    double m_velocity = 0;
    bool m_isMoving = false;
    Motion m_motion;
    /// Seconds since the target was set.
    double m_elapsed = 0;
    /// Of springs: what it was blended from.
    double m_oldResponse = 0;
    double m_oldDampingFraction = 1;
    /// Of easing curves: where it began.
    double m_origin = 0;
};

} // namespace brindle
