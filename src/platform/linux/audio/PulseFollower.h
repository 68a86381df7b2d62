#pragma once

#include "foundation/Lifetime.h"
#include "foundation/Scheduler.h"
#include "platform/AudioOutput.h"

#include <functional>
#include <memory>

namespace brindle {

class PulseSession;

/// Keeps to the sound server through its death and return. Main thread; never blocks but to end a session.
///
/// While there is no server it looks for one again and again, less often each time.
class PulseFollower
{
public:
    /// Seconds from one look for a server to the next: at first, and at most. Each pause is so many times as
    /// long as the one before, for a machine that has no server is to rest soon.
    static constexpr double firstPause = 0.5;
    static constexpr double longestPause = 120;
    static constexpr double growth = 4;

    /// Calls `changed` after the level changed while the server is followed; at most once a turn.
    PulseFollower(Scheduler &scheduler, std::function<void()> changed);
    ~PulseFollower();
    PulseFollower(const PulseFollower &) = delete;
    PulseFollower &operator=(const PulseFollower &) = delete;

    /// Begins, and ends; again and again. At rest there is no connection and no timer.
    void follow();
    void rest();
    bool isFollowing() const { return m_session || m_nextLook.isPending(); }

    /// Absent without a server, and until it has answered.
    std::optional<OutputLevel> level() const { return m_level; }

private:
    void look();
    void said(std::optional<OutputLevel> level);
    void ended();
    void set(std::optional<OutputLevel> level);

    Scheduler &m_scheduler;
    const std::function<void()> m_changed;
    std::unique_ptr<PulseSession> m_session;
    Delay m_nextLook;
    double m_pause = firstPause;
    std::optional<OutputLevel> m_level;
    Delay m_announcement;
    /// Ends with each session.
    Lifetime m_sessionLifetime;
};

} // namespace brindle
