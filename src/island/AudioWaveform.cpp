#include "island/AudioWaveform.h"

#include <algorithm>
#include <cmath>

namespace brindle {

double AudioWaveform::barHeight(int index, double seconds, double volume)
{
    constexpr double least = 2.4;
    constexpr double travel = 13.2;
    const double level = std::clamp(volume, 0.0, 1.0);
    if (!(level > 0.001))
        return least;
    const double phase = index * 1.31 + (index * 0.34 + 7.2) * seconds;
    const double swing = (std::sin(phase) + 1) * 0.5 * 0.48;
    const double drift = (std::sin(index * 0.82 + phase * 0.53) + 1) * 0.5 * 0.24;
    return std::pow(level, 0.62) * (swing + 0.28 + drift) * travel + least;
}

} // namespace brindle
