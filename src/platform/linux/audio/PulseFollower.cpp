#include "platform/linux/audio/PulseFollower.h"

#include "platform/linux/audio/PulseSession.h"

#include <algorithm>
#include <utility>

namespace brindle {

PulseFollower::PulseFollower(Scheduler &scheduler, std::function<void()> changed)
    : m_scheduler(scheduler)
    , m_changed(std::move(changed))
{ }

PulseFollower::~PulseFollower() = default;

void PulseFollower::follow()
{
    if (!isFollowing())
        look();
}

void PulseFollower::rest()
{
    m_sessionLifetime = Lifetime();
    m_session.reset();
    m_nextLook.cancel();
    m_announcement.cancel();
    m_pause = firstPause;
    m_level.reset();
}

// What a session still has to say when it goes finds nobody.
void PulseFollower::look()
{
    const auto post = [this](auto work) {
        return [this, work = m_sessionLifetime.guard(std::move(work))](
                   auto... said) { m_scheduler.post([work, said...]() mutable { work(said...); }); };
    };
    m_session = std::make_unique<PulseSession>(PulseSession::Listener{
        post([this](std::optional<OutputLevel> level) { said(level); }),
        post([this] { ended(); }),
    });
}

void PulseFollower::said(std::optional<OutputLevel> level)
{
    m_pause = firstPause;
    set(level);
}

void PulseFollower::ended()
{
    m_session.reset();
    m_nextLook = m_scheduler.after(m_pause, [this] { look(); });
    m_pause = std::min(growth * m_pause, longestPause);
    set(std::nullopt);
}

void PulseFollower::set(std::optional<OutputLevel> level)
{
    if (std::exchange(m_level, level) != level && !m_announcement.isPending())
        m_announcement = m_scheduler.after(0, m_changed);
}

} // namespace brindle
