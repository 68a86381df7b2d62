#pragma once

#include "platform/PanelWindow.h"

#include <memory>

namespace brindle {

class Platform;

/// The one window of the island: an area of fixed size at the top of a display, in which the surface draws a
/// smaller or larger shape. It can have the keyboard and is never the main window. Main thread.
class IslandPanel
{
public:
    /// Points.
    static constexpr double width = 940;
    static constexpr double height = 300;
    /// The gap to the upper edge of a display without a notch.
    static constexpr double topOffset = 8;

    explicit IslandPanel(Platform &platform);

    static PanelStyle style();
    /// Where the panel stands on this display, in the coordinates of `Screens`.
    static QRectF frameOn(const Screen &screen);

    PanelWindow &window() const { return *m_window; }

private:
    std::unique_ptr<PanelWindow> m_window;
};

} // namespace brindle
