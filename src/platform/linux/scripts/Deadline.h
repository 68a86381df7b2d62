#pragma once

#include "foundation/Scheduler.h"

#include <algorithm>
#include <cmath>

namespace brindle {

/// The moment by which blocking work must have ended. A plain value; any thread.
class Deadline
{
public:
    Deadline(const Scheduler &time, double seconds) : m_time(&time), m_end(time.uptime() + seconds) { }

    /// This moment, or the one `seconds` from now, whichever comes first.
    Deadline within(double seconds) const
    {
        Deadline sooner(*m_time, seconds);
        sooner.m_end = std::min(sooner.m_end, m_end);
        return sooner;
    }

    bool hasPassed() const { return milliseconds() == 0; }
    /// What is left, rounded up; 0 when it has passed.
    int milliseconds() const { return int(std::ceil(std::max(m_end - m_time->uptime(), 0.0) * 1000)); }

private:
    const Scheduler *m_time;
    double m_end;
};

} // namespace brindle
