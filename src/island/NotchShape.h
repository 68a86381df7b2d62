#pragma once

#include <QList>
#include <QPainterPath>
#include <QSizeF>

namespace brindle {

/// The island's outline: flat along the top edge of the display, with concave shoulders that flare out to
/// meet it and rounded corners below. A plain value.
///
/// The radii are what is asked for; in a small frame they give way so that the outline stays sound, down to
/// an empty one.
struct NotchShape
{
    /// Of the shoulders, in points.
    double topRadius = 0;
    /// Of the lower corners, in points.
    double bottomRadius = 0;

    /// The radius that a shoulder has in a frame of this size; never negative. Each takes that much of the
    /// width.
    double shoulder(QSizeF size) const;
    /// The radius that a lower corner has in a frame of this size; never negative.
    double corner(QSizeF size) const;

    /// The outline in a frame of this size whose top left corner is the origin, y downwards.
    QPainterPath path(QSizeF size) const;
    /// Half the outline's width in the middle of each row of one point's height, from the top.
    QList<double> halfWidths(QSizeF size) const;

    bool operator==(const NotchShape &) const = default;
};

} // namespace brindle
