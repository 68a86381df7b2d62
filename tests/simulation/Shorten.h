#pragma once

#include "simulation/Trail.h"

#include <functional>

namespace brindle::simulation {

/// The trail without everything that it fails without: no single event of the result can be left out, and no
/// pause dropped, unless `fails` was asked `limit` times before that was sure. `fails` must hold for `trail`
/// itself.
Trail shorten(Trail trail, const std::function<bool(const Trail &)> &fails, int limit = 20000);

} // namespace brindle::simulation
