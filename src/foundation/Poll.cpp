#include "foundation/Poll.h"

#include <cmath>
#include <utility>

namespace brindle {

Poll::Poll(Scheduler &scheduler, Rhythm rhythm, Reading reading, const Announcements &announcements)
    : m_scheduler(scheduler)
    , m_rhythm(rhythm)
    , m_reading(std::move(reading))
    , m_start(scheduler.uptime())
{
    tickOn();
    if (announcements)
        m_announcements = announcements([this] { wake(); });
}

void Poll::tickOn()
{
    m_timer = m_scheduler.every(m_rhythm.interval, m_rhythm.tolerance, [this] { tick(); });
}

void Poll::tick()
{
    auto restUnless = m_lifetime.guard([this](bool changed) {
        if (!changed && m_announcements)
            m_timer.cancel();
    });
    // The reading may end the poll, and must outlive that.
    const Reading reading = m_reading;
    restUnless(reading());
}

void Poll::wake()
{
    if (m_timer.isPending())
        return;
    const double sinceLast = std::fmod(m_scheduler.uptime() - m_start, m_rhythm.interval);
    m_timer = m_scheduler.after(m_rhythm.interval - sinceLast, [this] {
        tickOn();
        tick();
    });
}

} // namespace brindle
