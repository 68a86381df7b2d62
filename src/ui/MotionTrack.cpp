#include "ui/MotionTrack.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace brindle {
namespace {

// A cubic through (0,0) and (1,1); the eye takes it for the usual curve, and its slope is known in closed
// form.
double eased(Motion::Kind kind, double x)
{
    const double rest = 1 - x;
    return kind == Motion::easeOut ? 1 - rest * rest * rest : x * x * (3 - 2 * x);
}

double easedSlope(Motion::Kind kind, double x)
{
    return kind == Motion::easeOut ? 3 * (1 - x) * (1 - x) : 6 * x * (1 - x);
}

// While one spring passes into another the step must be short; this is well under a frame.
constexpr double blendStep = 1.0 / 480;

} // namespace

MotionTrack::MotionTrack(double value, double precision)
    : m_precision(precision)
    , m_value(value)
    , m_target(value)
{ }

void MotionTrack::jump(double value)
{
    m_value = m_target = value;
    m_velocity = 0;
    m_isMoving = false;
}

void MotionTrack::retarget(double target, const Motion &motion)
{
    if (target == m_target)
        return;
    if (motion.kind == Motion::none) {
        jump(target);
        return;
    }
    const bool wasSpring = m_isMoving && m_motion.kind == Motion::spring;
    if (motion.kind == Motion::spring) {
        const double progress =
            wasSpring && m_motion.blend > 0 ? std::min(m_elapsed / m_motion.blend, 1.0) : 1.0;
        m_oldResponse = wasSpring ? std::lerp(m_oldResponse, m_motion.response, progress) : motion.response;
        m_oldDampingFraction = wasSpring ? std::lerp(m_oldDampingFraction, m_motion.dampingFraction, progress)
                                         : motion.dampingFraction;
    }
    m_motion = motion;
    m_target = target;
    m_origin = m_value;
    m_elapsed = 0;
    m_isMoving = true;
}

void MotionTrack::advance(double seconds)
{
    if (!m_isMoving || seconds <= 0)
        return;
    if (m_motion.kind == Motion::spring)
        advanceSpring(seconds);
    else
        advanceEase(seconds);
}

void MotionTrack::advanceSpring(double seconds)
{
    SpringState state{m_value - m_target, m_velocity};
    const bool blends = m_motion.blend > 0
        && (m_oldResponse != m_motion.response || m_oldDampingFraction != m_motion.dampingFraction);
    while (blends && seconds > 0 && m_elapsed < m_motion.blend) {
        const double step = std::min({blendStep, seconds, m_motion.blend - m_elapsed});
        const double progress = (m_elapsed + step / 2) / m_motion.blend;
        state = springAfter(state, std::lerp(m_oldResponse, m_motion.response, progress),
            std::lerp(m_oldDampingFraction, m_motion.dampingFraction, progress), step);
        m_elapsed += step;
        seconds -= step;
    }
    if (seconds > 0) {
        state = springAfter(state, m_motion.response, m_motion.dampingFraction, seconds);
        m_elapsed += seconds;
    }
    // What is left of the speed carries the value no farther than speed over angular frequency.
    const double reach = std::abs(state.velocity) * m_motion.response / (2 * std::numbers::pi);
    if (std::abs(state.displacement) < m_precision && reach < m_precision) {
        jump(m_target);
        return;
    }
    m_value = m_target + state.displacement;
    m_velocity = state.velocity;
}

void MotionTrack::advanceEase(double seconds)
{
    m_elapsed += seconds;
    const double x = m_motion.duration > 0 ? m_elapsed / m_motion.duration : 1;
    if (x >= 1) {
        jump(m_target);
        return;
    }
    m_value = std::lerp(m_origin, m_target, eased(m_motion.kind, x));
    m_velocity = (m_target - m_origin) * easedSlope(m_motion.kind, x) / m_motion.duration;
}

} // namespace brindle
