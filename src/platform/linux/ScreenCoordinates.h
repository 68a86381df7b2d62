#pragma once

#include <QPointF>
#include <QRectF>

namespace brindle {

/// The one place where the window system's coordinates (origin at the top left, y downwards) and the
/// program's (origin at the bottom left of the primary display, y upwards) are turned into each other. Main
/// thread; needs the application object.
namespace ScreenCoordinates {
QRectF fromWindowSystem(const QRectF &rect);
QPointF fromWindowSystem(const QPointF &point);
QRectF toWindowSystem(const QRectF &rect);
} // namespace ScreenCoordinates

} // namespace brindle
