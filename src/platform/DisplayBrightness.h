#pragma once

#include "foundation/Subscription.h"

#include <functional>
#include <optional>

namespace brindle {

/// How bright the machine's own display is. Main thread.
class DisplayBrightness
{
public:
    virtual ~DisplayBrightness() = default;

    /// 0 to 1. Absent when no display says: that is no error. Answers from memory while somebody is
    /// registered, and otherwise asks the system for a few bytes.
    virtual std::optional<double> brightness() const = 0;
    /// Calls `changed` after the brightness changed, at most once a turn. Empty when the system has no such
    /// notification. Nothing is watched while nobody is registered.
    [[nodiscard]] virtual Subscription notify(std::function<void()> changed) = 0;
};

} // namespace brindle
