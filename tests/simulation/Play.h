#pragma once

#include "simulation/Trail.h"

#include <optional>

namespace brindle::simulation {

struct Failure
{
    /// The event after which it was seen, counted from 0.
    std::size_t index;
    QString complaint;
};

/// Plays a trail on a new machine, looking at everything after each event; ends at the first thing that is
/// wrong.
std::optional<Failure> play(const Trail &trail);

} // namespace brindle::simulation
