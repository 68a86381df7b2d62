#include "island/NotchShape.h"

#include <algorithm>
#include <cmath>

namespace brindle {

double NotchShape::shoulder(QSizeF size) const
{
    return std::max(0.0, std::min({topRadius, size.width() * 0.25, size.height() * 0.5}));
}

double NotchShape::corner(QSizeF size) const
{
    const double t = shoulder(size);
    return std::max(0.0, std::min({bottomRadius, (size.width() - 2 * t) / 2, size.height() - t}));
}

QPainterPath NotchShape::path(QSizeF size) const
{
    constexpr double circle = 0.5522847498;
    const double w = size.width();
    const double h = size.height();
    const double t = shoulder(size);
    const double b = corner(size);
    const double k = t * circle;

    QPainterPath path;
    path.moveTo(0, 0);
    path.lineTo(w, 0);
    path.cubicTo(w - k, 0, w - t, t - k, w - t, t);
    path.lineTo(w - t, h - b);
    path.quadTo(w - t, h, w - t - b, h);
    path.lineTo(t + b, h);
    path.quadTo(t, h, t, h - b);
    path.lineTo(t, t);
    path.cubicTo(t, t - k, k, 0, 0, 0);
    path.closeSubpath();
    return path;
}

QList<double> NotchShape::halfWidths(QSizeF size) const
{
    const double h = size.height();
    const double t = shoulder(size);
    const double b = corner(size);
    QList<double> result;
    result.reserve(qsizetype(std::ceil(std::max(h, 0.0))));
    for (int row = 0; row + 0.5 < h; ++row) {
        const double y = row + 0.5;
        double half = size.width() / 2 - t;
        if (y < t) {
            const double up = t - y;
            half = size.width() / 2 - std::sqrt(t * t - up * up);
        } else if (y > h - b) {
            // Along the corner's curve, at the parameter where it passes this row.
            const double s = 1 - std::sqrt(1 - (y - (h - b)) / b);
            half -= b * s * s;
        }
        result << std::max(0.0, half);
    }
    return result;
}

} // namespace brindle
