#pragma once

#include "foundation/DeadlineQueue.h"

#include <atomic>
#include <deque>
#include <mutex>

namespace brindle {

/// Time that stands still until it is told to pass: a day goes by in milliseconds and nothing ever waits.
class ManualScheduler : public Scheduler
{
public:
    explicit ManualScheduler(Date start = Date::fromReferenceSeconds(0));

    Date now() const override { return m_atZeroUptime.load() + m_uptime; }
    double uptime() const override { return m_uptime; }
    [[nodiscard]] Delay after(double seconds, std::function<void()> work) override;
    [[nodiscard]] Delay every(double seconds, double tolerance, std::function<void()> work) override;
    void post(std::function<void()> work) override;

    /// Lets `seconds` pass. What was posted runs first, then each deadline at its own moment, together with
    /// what it brings about.
    void advance(double seconds);
    /// Runs what was posted, also what that posts in turn.
    void runPosted();
    /// Moves the wall clock, as a user or a time server would; delays do not notice.
    void jumpWallClock(double seconds) { m_atZeroUptime = m_atZeroUptime.load() + seconds; }

    /// How many delays wait.
    qsizetype pendingCount() const { return m_queue.size(); }
    /// How often delayed work ran since the start.
    quint64 wakeUps() const { return m_wakeUps; }

private:
    // Read on any thread, written on the main one.
    std::atomic<Date> m_atZeroUptime;
    std::atomic<double> m_uptime = 0;
    quint64 m_wakeUps = 0;
    DeadlineQueue m_queue;
    std::mutex m_postedMutex;
    std::deque<std::function<void()>> m_posted;
};

} // namespace brindle
