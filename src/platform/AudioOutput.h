#pragma once

#include "foundation/Subscription.h"

#include <functional>
#include <optional>

namespace brindle {

/// How loud the default output is.
struct OutputLevel
{
    /// 0 to 1: of the whole output, or the mean of its channels where there is no single level.
    double level = 0;
    bool muted = false;

    bool operator==(const OutputLevel &) const = default;
};

/// The machine's default audio output. Main thread.
///
/// `level()` answers from memory and never blocks; it follows a change of the default output, and the sound
/// server's going and coming. Absent: there is no output, or it cannot tell. That is no error.
class AudioOutput
{
public:
    virtual ~AudioOutput() = default;

    virtual std::optional<OutputLevel> level() const = 0;
    /// Calls `changed` after the level changed, at most once a turn. Empty when the system has no such
    /// notification. Nothing of the sound server is listened to while nobody is registered and nobody reads.
    [[nodiscard]] virtual Subscription notify(std::function<void()> changed) = 0;
};

} // namespace brindle
