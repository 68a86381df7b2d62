#pragma once

#include "foundation/Subscription.h"
#include "platform/EventMonitors.h"

#include <QRectF>

#include <functional>
#include <optional>

namespace brindle {

class Haptics;

/// Turns scrolls and swipes over the sidebar into steps from tab to tab, with a tick for each.
///
/// Watches only: every event goes on to whoever it was for. It sees events from `start()` until `stop()` or
/// its end. Main thread.
class SidebarScrollMonitor
{
public:
    struct Callbacks
    {
        /// How far the next step is: -1 to 1, positive towards the tab before.
        std::function<void(double)> progressChanged;
        std::function<void()> gestureEnded;
        /// +1 for the next tab, -1 for the one before.
        std::function<void(int)> selectAdjacent;
    };

    SidebarScrollMonitor(EventMonitors &eventMonitors, Haptics &haptics, Callbacks callbacks);

    /// A second call keeps the monitor that there is.
    void start();
    void stop();
    bool isWatching() const { return bool(m_monitor); }

    /// Where the sidebar is, in points from the panel's top left corner, y downwards; absent while it is
    /// nowhere.
    void setBounds(const std::optional<QRectF> &bounds) { m_bounds = bounds; }

    /// Scroll distance since the last step, in points or notches.
    double accumulatedDelta() const { return m_accumulatedDelta; }

    void scrollWheel(const InputEvent &event);

private:
    void scrollBy(double delta, bool isPrecise);
    void endGesture();
    void reportProgress(double threshold) const;

    EventMonitors &m_eventMonitors;
    Haptics &m_haptics;
    Callbacks m_callbacks;
    std::optional<QRectF> m_bounds;
    double m_accumulatedDelta = 0;
    Subscription m_monitor;
};

} // namespace brindle
