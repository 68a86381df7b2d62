#include "foundation/ManualScheduler.h"

#include <algorithm>

namespace brindle {

ManualScheduler::ManualScheduler(Date start) : m_atZeroUptime(start) { }

Delay ManualScheduler::after(double seconds, std::function<void()> work)
{
    return m_queue.add(m_uptime + std::max(seconds, 0.0), 0, 0, std::move(work));
}

Delay ManualScheduler::every(double seconds, double tolerance, std::function<void()> work)
{
    Q_ASSERT(seconds > 0);
    return m_queue.add(m_uptime + seconds, seconds, tolerance, std::move(work));
}

void ManualScheduler::post(std::function<void()> work)
{
    const std::scoped_lock lock(m_postedMutex);
    m_posted.push_back(std::move(work));
}

void ManualScheduler::advance(double seconds)
{
    const double end = m_uptime + seconds;
    runPosted();
    for (auto next = m_queue.nearestDeadline(); next && *next <= end; next = m_queue.nearestDeadline()) {
        m_uptime = std::max(*next, m_uptime.load());
        const auto work = m_queue.takeDue(m_uptime);
        ++m_wakeUps;
        work();
        runPosted();
    }
    m_uptime = end;
}

void ManualScheduler::runPosted()
{
    for (;;) {
        std::function<void()> work;
        {
            const std::scoped_lock lock(m_postedMutex);
            if (m_posted.empty())
                return;
            work = std::move(m_posted.front());
            m_posted.pop_front();
        }
        work();
    }
}

} // namespace brindle
