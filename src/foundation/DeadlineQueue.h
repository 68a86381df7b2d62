#pragma once

#include "foundation/Scheduler.h"

#include <QtGlobal>

#include <memory>
#include <optional>

namespace brindle {

/// The waiting work of a scheduler, by deadline: what real and manual time have in common. Main thread only.
///
/// Handles may outlive the queue; they are finished then.
class DeadlineQueue
{
public:
    DeadlineQueue();
    ~DeadlineQueue();

    /// Deadlines are on the clock of `uptime()`. `interval` above 0 repeats.
    Delay add(double deadline, double interval, double tolerance, std::function<void()> work);

    std::optional<double> nearestDeadline() const;
    /// The latest moment at which nothing is late beyond its tolerance: the best time for one wake-up.
    std::optional<double> latestWakeUp() const;
    qsizetype size() const;

    /// Takes the work with the nearest deadline, for the caller to run; empty when none is due at `now`.
    /// Repeated work waits for its next time already.
    std::function<void()> takeDue(double now);

    struct Entries;

private:
    std::shared_ptr<Entries> m_entries;
};

} // namespace brindle
