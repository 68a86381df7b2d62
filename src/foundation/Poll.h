#pragma once

#include "foundation/Lifetime.h"
#include "foundation/Scheduler.h"
#include "foundation/Subscription.h"

#include <functional>

namespace brindle {

/// A reading that is taken again and again, and rests while it cannot bring anything new.
///
/// The interval says how soon a change is seen, and how often the reading is taken at most. Where changes are
/// announced, nothing runs until one is; the reading is then taken at the moments at which it would have been
/// taken anyway, until it finds nothing new. Where they are not announced, it is taken always. Whoever looks
/// at the readings cannot tell the two apart.
///
/// Runs from construction to destruction, with the first reading after one interval; the reading may end the
/// poll. Main thread.
class Poll
{
public:
    struct Rhythm
    {
        /// Seconds, above 0.
        double interval;
        /// Seconds that a reading may be late.
        double tolerance;
    };
    /// Takes the reading; true when it found a change.
    using Reading = std::function<bool()>;
    /// Has `changed` called for each change, once the change can be read. Empty when changes are not
    /// announced.
    using Announcements = std::function<Subscription(std::function<void()> changed)>;

    Poll(Scheduler &scheduler, Rhythm rhythm, Reading reading, const Announcements &announcements = {});
    Poll(const Poll &) = delete;
    Poll &operator=(const Poll &) = delete;

    bool isResting() const { return !m_timer.isPending(); }

private:
    void tickOn();
    void tick();
    void wake();

    Scheduler &m_scheduler;
    const Rhythm m_rhythm;
    const Reading m_reading;
    const double m_start;
    Delay m_timer;
    Subscription m_announcements;
    Lifetime m_lifetime;
};

} // namespace brindle
