#include "ui/Animated.h"

namespace brindle {

Animated::Animated(QObject *parent) : QObject(parent), m_ticker([this](double seconds) { tick(seconds); }) { }

void Animated::setTo(double to)
{
    if (to == m_to)
        return;
    m_to = to;
    Q_EMIT toChanged();
    if (m_isComplete)
        retarget();
}

void Animated::setMotion(const Motion &motion)
{
    if (motion == m_motion)
        return;
    m_motion = motion;
    Q_EMIT motionChanged();
}

void Animated::setFallingMotion(const Motion &motion)
{
    if (motion == m_fallingMotion)
        return;
    m_fallingMotion = motion;
    Q_EMIT motionChanged();
}

void Animated::componentComplete()
{
    m_isComplete = true;
    m_track.jump(from());
    Q_EMIT valueChanged();
    retarget();
}

void Animated::retarget()
{
    const double before = m_track.value();
    m_track.retarget(m_to, m_to < m_track.target() ? fallingMotion() : m_motion);
    if (m_track.isMoving()) {
        setMoving(true);
        m_ticker.run();
        return;
    }
    m_ticker.rest();
    if (m_track.value() != before)
        Q_EMIT valueChanged();
    setMoving(false);
    if (m_track.value() != before)
        Q_EMIT settled();
}

void Animated::tick(double seconds)
{
    m_track.advance(seconds);
    const bool hasArrived = !m_track.isMoving();
    if (hasArrived)
        m_ticker.rest();
    Q_EMIT valueChanged();
    if (hasArrived && !m_track.isMoving()) {
        setMoving(false);
        Q_EMIT settled();
    }
}

void Animated::setMoving(bool moving)
{
    if (moving == m_isMoving)
        return;
    m_isMoving = moving;
    Q_EMIT isMovingChanged();
}

} // namespace brindle
