#include "island/FluidSystemLevel.h"

#include <algorithm>
#include <cmath>

namespace brindle {
namespace {

double fillWidth(double width, double trackHeight, double value)
{
    // Not a number counts as nothing.
    if (!(value > 0.001))
        return 0;
    return std::max(std::min(value, 1.0) * width, trackHeight);
}

} // namespace

FluidSystemLevel FluidSystemLevel::geometry(QSizeF size, double value, double seconds, bool isLive)
{
    const double height = std::max(std::min(size.height(), 7.0), 5.0);
    const double middle = size.height() / 2;
    const double fill = fillWidth(size.width(), height, value);
    const double phase = seconds * 7.4;
    const double pulse = isLive ? (std::sin(phase) + 1) * 0.5 : 0;
    const double wobble = isLive ? std::sin(phase * 0.73) * 0.9 : 0;

    FluidSystemLevel level;
    level.track = QRectF(0, middle - height / 2, size.width(), height);
    if (fill <= 0)
        return level;
    level.fill = QRectF(0, middle - height / 2, fill, height);
    const double head = height + pulse * 1.6;
    level.head = QRectF(std::max(0.0, fill - height + wobble), middle - head / 2, head, head);
    const double trail = height * 0.72;
    const double lift = (pulse - 0.5) * 1.1;
    level.trail =
        QRectF(std::max(0.0, fill - height * 1.35 - wobble), middle - trail / 2 + lift, trail, trail);
    return level;
}

} // namespace brindle
