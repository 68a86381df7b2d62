#pragma once

#include "platform/HostApplication.h"

namespace brindle {

/// The program as Qt runs it. A Linux desktop learns from the windows themselves what belongs in its task
/// bar, so that the policy needs no more than a program that lives on without a window.
class QtHostApplication : public HostApplication
{
public:
    void setActivationPolicy(ActivationPolicy policy) override;
    [[nodiscard]] Subscription notifyActivation(std::function<void()> becameActive) override;
    void terminate() override;
};

} // namespace brindle
