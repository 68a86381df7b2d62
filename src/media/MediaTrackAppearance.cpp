#include "media/MediaTrackAppearance.h"

#include <algorithm>
#include <cmath>

namespace brindle {

MediaTrackAppearance MediaTrackAppearance::between(
    const MediaTrackAppearance &from, const MediaTrackAppearance &to, double progress)
{
    MediaTrackAppearance result;
    result.opacity = std::clamp(std::lerp(from.opacity, to.opacity, progress), 0.0, 1.0);
    result.blurRadius = std::max(std::lerp(from.blurRadius, to.blurRadius, progress), 0.0);
    result.scale = std::lerp(from.scale, to.scale, progress);
    result.xOffset = std::lerp(from.xOffset, to.xOffset, progress);
    return result;
}

} // namespace brindle
