#pragma once

namespace brindle {

/// The bars beside the artwork that move while something plays.
namespace AudioWaveform {

inline constexpr int barCount = 5;
/// Points.
inline constexpr double barWidth = 1.6;
inline constexpr double spacing = 1.5;
/// Seconds from one drawing to the next.
inline constexpr double interval = 1.0 / 24;

/// Height in points of the bar `index` (0 … barCount - 1), `seconds` after the start of 2001 UTC, at an
/// output level of `volume` (0 to 1; what lies outside is cut).
double barHeight(int index, double seconds, double volume);

} // namespace AudioWaveform
} // namespace brindle
