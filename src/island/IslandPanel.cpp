#include "island/IslandPanel.h"

#include "platform/Platform.h"

#include <cmath>

namespace brindle {

IslandPanel::IslandPanel(Platform &platform) : m_window(platform.makePanelWindow(style())) { }

PanelStyle IslandPanel::style()
{
    return {
        .placeholderSize = {260, 38},
        .levelAboveMenuBar = 1,
        .opaque = false,
        .hasShadow = false,
        .hidesOnDeactivate = false,
        .joinsAllSpaces = true,
        .stationary = true,
        .overFullScreenWindows = true,
        .movable = false,
        .movableByBackground = false,
        .titleVisible = false,
        .titlebarTransparent = true,
        .acceptsMouseMoved = true,
        .canBecomeKey = true,
        .canBecomeMain = false,
    };
}

QRectF IslandPanel::frameOn(const Screen &screen)
{
    // On a display with a notch the island touches the upper edge and merges with it.
    const double offset = screen.safeAreaTop > 0 ? 0 : topOffset;
    const double midX = screen.frame.left() + screen.frame.width() / 2;
    const double maxY = screen.frame.top() + screen.frame.height();
    return {std::round(midX - width / 2), std::round(maxY - height - offset), width, height};
}

} // namespace brindle
