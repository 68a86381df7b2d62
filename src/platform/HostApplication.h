#pragma once

#include "foundation/Subscription.h"

#include <functional>

namespace brindle {

/// The running program, as the desktop sees it. Main thread.
class HostApplication
{
public:
    enum class ActivationPolicy { regular = 0, accessory = 1, prohibited = 2 };

    virtual ~HostApplication() = default;

    /// `accessory`: no entry in the dock or task bar and no application menu.
    virtual void setActivationPolicy(ActivationPolicy policy) = 0;
    /// Calls `becameActive` each time when the person turns to the program: one of its windows gets the
    /// keyboard, and none had it.
    [[nodiscard]] virtual Subscription notifyActivation(std::function<void()> becameActive) = 0;
    /// Ends the program in an orderly way, after the present turn.
    virtual void terminate() = 0;
};

} // namespace brindle
