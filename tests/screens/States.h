#pragma once

#include "screens/IslandScene.h"

#include <functional>

namespace brindle {

/// One look of the island: its name, and how the island gets there from rest.
struct ScreenState
{
    QByteArray name;
    std::function<void(IslandScene &)> stage;
    /// What of the panel is worth seeing, in points; null for all of it.
    QRectF area = {};
};

const QList<ScreenState> &allScreenStates();

} // namespace brindle
