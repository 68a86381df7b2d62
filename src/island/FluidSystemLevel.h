#pragma once

#include <QRectF>
#include <QSizeF>

namespace brindle {

/// The geometry of a level bar with a live head. A plain value, in points within its frame.
struct FluidSystemLevel
{
    /// Seconds from one drawing to the next, at least.
    static constexpr double interval = 1.0 / 30;

    QRectF track;
    /// Empty when the level is too low to show.
    QRectF fill;
    /// The bright circle at the end of the fill, and the faint one that trails it.
    QRectF head;
    QRectF trail;

    /// At a level of `value` (0 to 1), `seconds` after the start of 2001 UTC. `isLive` false holds the head
    /// still.
    static FluidSystemLevel geometry(QSizeF size, double value, double seconds, bool isLive);
};

} // namespace brindle
