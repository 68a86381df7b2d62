#pragma once

#include "platform/InputMonitoring.h"

namespace brindle {

/// On an X server every program may see the keys.
class X11InputMonitoring : public InputMonitoring
{
public:
    bool preflightListenEventAccess() const override { return true; }
    void requestListenEventAccess() override { }
};

} // namespace brindle
