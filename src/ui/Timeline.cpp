#include "ui/Timeline.h"

namespace brindle {

void Timeline::setClock(Clock *clock)
{
    if (clock == m_clock)
        return;
    m_clock = clock;
    // The date is right from the start, also where nothing runs yet.
    if (clock)
        tick();
    restart();
}

void Timeline::setInterval(double seconds)
{
    if (seconds == m_interval)
        return;
    m_interval = seconds;
    restart();
}

void Timeline::setRunning(bool running)
{
    if (running == m_isRunning)
        return;
    m_isRunning = running;
    restart();
}

void Timeline::componentComplete()
{
    m_isComplete = true;
    restart();
}

void Timeline::restart()
{
    m_ticks.cancel();
    const Clock *clock = m_clock;
    if (!m_isComplete || !m_isRunning || !clock)
        return;
    m_ticks = clock->scheduler().every(m_interval, m_tolerance, [this] { tick(); });
    tick();
}

void Timeline::tick()
{
    const Clock *clock = m_clock;
    if (!clock)
        return;
    m_date = clock->scheduler().now();
    Q_EMIT ticked();
}

} // namespace brindle
