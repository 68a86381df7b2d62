#pragma once

#include "screens/IslandScene.h"

#include <functional>

namespace brindle {

/// One look of the island: its name, and how the island gets there from rest.
struct ScreenState
{
    const char *name;
    std::function<void(IslandScene &)> stage;
};

const QList<ScreenState> &allScreenStates();

} // namespace brindle
