#pragma once

#include <QPointF>
#include <QRectF>

namespace brindle {

/// Whether the point lies in the rectangle. The lower edges belong to it, the upper ones do not, and an empty
/// rectangle contains nothing; this is how neighbouring areas share no point.
constexpr bool contains(const QRectF &rect, const QPointF &point)
{
    return point.x() >= rect.left() && point.x() < rect.left() + rect.width() && point.y() >= rect.top()
        && point.y() < rect.top() + rect.height();
}

} // namespace brindle
