#pragma once

namespace brindle {

/// Where a damped spring is and how fast it moves, seen from its rest.
struct SpringState
{
    double displacement = 0;
    /// Units a second.
    double velocity = 0;
};

/// The state `seconds` later, exactly: a long step equals the same time in short ones. `response` is the time
/// of one undamped swing in seconds, above 0; `dampingFraction` is 0 or more, and 1 is critical.
SpringState springAfter(SpringState state, double response, double dampingFraction, double seconds);

} // namespace brindle
