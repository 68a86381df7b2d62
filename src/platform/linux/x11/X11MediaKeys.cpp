#include "platform/linux/x11/X11MediaKeys.h"

#include "platform/linux/x11/X11KeyListener.h"

#include <utility>

namespace brindle {

X11MediaKeys::X11MediaKeys()
    : m_monitors([this] {
        if (m_monitors.isEmpty())
            m_listener.reset();
    })
{ }

X11MediaKeys::~X11MediaKeys() = default;

Subscription X11MediaKeys::addGlobalMonitor(std::function<void(long data1)> handler)
{
    if (!m_listener) {
        auto listener = std::make_unique<X11KeyListener>([this](long data1) { m_monitors.call(data1); });
        if (!listener->isGranted())
            return {};
        m_listener = std::move(listener);
    }
    return m_monitors.add(std::move(handler));
}

} // namespace brindle
