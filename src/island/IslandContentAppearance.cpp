#include "island/IslandContentAppearance.h"

#include <algorithm>
#include <cmath>

namespace brindle {

IslandContentAppearance IslandContentAppearance::between(
    const IslandContentAppearance &from, const IslandContentAppearance &to, double progress)
{
    return {
        std::clamp(std::lerp(from.opacity, to.opacity, progress), 0.0, 1.0),
        std::max(std::lerp(from.blurRadius, to.blurRadius, progress), 0.0),
        std::lerp(from.scale, to.scale, progress),
        std::lerp(from.verticalOffset, to.verticalOffset, progress),
    };
}

} // namespace brindle
