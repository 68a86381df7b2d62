#include "platform/linux/audio/PulseAudioOutput.h"

#include <utility>

namespace brindle {

PulseAudioOutput::PulseAudioOutput(Scheduler &scheduler)
    : m_scheduler(scheduler)
    , m_listeners([this] {
        if (m_listeners.isEmpty())
            m_server.rest();
    })
    , m_server(scheduler, [this] { m_listeners.call(); })
{ }

std::optional<OutputLevel> PulseAudioOutput::level() const
{
    m_wasRead = true;
    if (m_listeners.isEmpty() && !m_end.isPending())
        linger();
    return m_server.level();
}

// Each reading puts the end off, at the cost of a flag.
void PulseAudioOutput::linger() const
{
    m_wasRead = false;
    m_server.follow();
    m_end = m_scheduler.after(lingering, [this] {
        if (m_wasRead)
            linger();
        else
            m_server.rest();
    });
}

Subscription PulseAudioOutput::notify(std::function<void()> changed)
{
    m_end.cancel();
    m_server.follow();
    return m_listeners.add(std::move(changed));
}

} // namespace brindle
