#pragma once

#include "foundation/Listeners.h"
#include "platform/AudioOutput.h"
#include "platform/linux/audio/PulseFollower.h"

namespace brindle {

/// The default output of the session's sound server: PulseAudio, or PipeWire, which speaks its language. The
/// level is the one that mixers show.
///
/// The server is listened to while somebody is registered, and for `lingering` seconds after a reading; a
/// reading before it has answered is absent.
class PulseAudioOutput : public AudioOutput
{
public:
    static constexpr double lingering = 10;

    explicit PulseAudioOutput(Scheduler &scheduler);

    std::optional<OutputLevel> level() const override;
    [[nodiscard]] Subscription notify(std::function<void()> changed) override;

    bool isListening() const { return m_server.isFollowing(); }

private:
    void linger() const;

    Scheduler &m_scheduler;
    Listeners<> m_listeners;
    // To read is to begin to listen, which changes nothing of what is read.
    mutable PulseFollower m_server;
    mutable bool m_wasRead = false;
    mutable Delay m_end;
};

} // namespace brindle
