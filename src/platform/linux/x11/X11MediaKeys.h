#pragma once

#include "foundation/Listeners.h"
#include "platform/MediaKeys.h"

#include <memory>

namespace brindle {

class X11KeyListener;

/// The media keys as the X server's raw input reports them: whoever has the keyboard or has grabbed it, and
/// nobody misses them.
///
/// A key that is held comes down once; what it changes meanwhile shows by itself.
class X11MediaKeys : public MediaKeys
{
public:
    X11MediaKeys();
    ~X11MediaKeys() override;

    [[nodiscard]] Subscription addGlobalMonitor(std::function<void(long data1)> handler) override;

    bool isListening() const { return m_listener != nullptr; }

private:
    /// While there is a monitor.
    std::unique_ptr<X11KeyListener> m_listener;
    Listeners<long> m_monitors;
};

} // namespace brindle
