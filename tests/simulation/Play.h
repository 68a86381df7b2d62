#pragma once

#include "simulation/Trail.h"

#include <optional>

namespace brindle::simulation {

/// Plays a trail on a new machine, looking at everything after each event; ends at the first thing that is
/// wrong.
std::optional<trails::Failure> play(const Trail &trail);

} // namespace brindle::simulation
