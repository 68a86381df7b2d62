#include "platform/linux/audio/PulseAudioOutput.h"

#include <utility>

namespace brindle {

std::optional<OutputLevel> PulseAudioOutput::level() const
{
    m_wasRead = true;
    if (m_listeners == 0 && !m_end.isPending())
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
    ++m_listeners;
    m_end.cancel();
    m_server.follow();
    const auto connection =
        QObject::connect(&m_server, &PulseFollower::changed, &m_server, std::move(changed));
    return Subscription{m_lifetime.guard([this, connection] {
        QObject::disconnect(connection);
        listenerEnded();
    })};
}

void PulseAudioOutput::listenerEnded()
{
    if (--m_listeners == 0)
        m_server.rest();
}

} // namespace brindle
