#pragma once

#include "media/NowPlayingTrack.h"

#include <QStringList>

#include <functional>
#include <optional>

namespace brindle {

/// The feed that knows the system's own now-playing state, and its commands. Main thread.
class MediaRemote
{
public:
    using UpdateHandler = std::function<void(const std::optional<NowPlayingTrack> &)>;
    using RunningHandler = std::function<void(bool)>;

    virtual ~MediaRemote() = default;

    /// True when it runs afterwards. The handlers replace earlier ones and are called on later turns; an end
    /// that was not asked for is told by `onRunningChanged` soon after `isRunning()` has changed.
    virtual bool start(UpdateHandler onUpdate, RunningHandler onRunningChanged) = 0;
    /// Ends it; neither handler is called for it.
    virtual void stop() = 0;
    virtual bool isRunning() const = 0;
    /// Commands run one at a time, in the order of sending; what becomes of one is not told.
    virtual void send(const QStringList &arguments) = 0;
    virtual void seek(double seconds) = 0;
};

} // namespace brindle
