#pragma once

#include "screens/States.h"

namespace brindle {

/// Makes the application draw alike on every machine: font, locale, time zone and renderer are pinned. To be
/// called before the first window.
void pinSurroundings();

/// The island in this state; `scale` is in device pixels for each point.
QImage pictureOf(const ScreenState &state, double scale);
/// "name@2x.png"
QString fileNameOf(const ScreenState &state, int scale);

} // namespace brindle
