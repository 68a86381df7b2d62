#pragma once

#include "ui/ButtonStyle.h"

namespace brindle {

/// Of the transport controls.
constexpr ButtonStyle mediaControlButtonStyle(bool reducesEffects)
{
    return {
        .pressedScale = 0.97,
        .hoveredScale = 1.015,
        .restingFill = 0.035,
        .hoveredFill = 0.08,
        .motion = reducesEffects ? Motion::makeEaseInOut(0.12) : Motion::makeSpring(0.22, 0.76),
        .fillMotion = reducesEffects ? Motion::makeEaseInOut(0.12) : Motion::makeSpring(0.22, 0.76),
    };
}

/// Of the small cards beside the player, those that can be pressed and those that cannot.
constexpr ButtonStyle utilityButtonStyle(bool reducesEffects)
{
    return {
        .pressedScale = 0.88,
        .hoveredScale = 1.06,
        .restingFill = 0.045,
        .hoveredFill = 0.055,
        .motion = reducesEffects ? Motion::makeEaseInOut(0.12) : Motion::makeSpring(0.2, 0.72),
        .fillMotion = Motion::makeEaseOut(0.08),
    };
}

} // namespace brindle
