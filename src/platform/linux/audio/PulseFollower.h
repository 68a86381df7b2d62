#pragma once

#include "foundation/Lifetime.h"
#include "foundation/Scheduler.h"
#include "platform/AudioOutput.h"

#include <QObject>

#include <memory>

namespace brindle {

class PulseSession;

/// Keeps to the sound server through its death and return. Main thread; never blocks but to end a session.
///
/// While there is no server it looks for one again and again, less often each time.
class PulseFollower : public QObject
{
    Q_OBJECT

public:
    /// Seconds from one look for a server to the next: at first, and at most.
    static constexpr double firstPause = 0.5;
    static constexpr double longestPause = 30;

    explicit PulseFollower(Scheduler &scheduler);
    ~PulseFollower() override;

    /// Begins, and ends; again and again. At rest there is no connection and no timer.
    void follow();
    void rest();
    bool isFollowing() const { return m_session || m_nextLook.isPending(); }

    /// Absent without a server, and until it has answered.
    std::optional<OutputLevel> level() const { return m_level; }

Q_SIGNALS:
    /// The level changed while the server was followed; at most once a turn.
    void changed();

private:
    void look();
    void said(std::optional<OutputLevel> level);
    void ended();
    void set(std::optional<OutputLevel> level);

    Scheduler &m_scheduler;
    std::unique_ptr<PulseSession> m_session;
    Delay m_nextLook;
    double m_pause = firstPause;
    std::optional<OutputLevel> m_level;
    bool m_isAnnouncing = false;
    /// Ends with each session.
    Lifetime m_sessionLifetime;
    Lifetime m_lifetime;
};

} // namespace brindle
