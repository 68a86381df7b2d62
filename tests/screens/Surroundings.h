#pragma once

#include "screens/States.h"

#include <QGuiApplication>

#include <memory>

namespace brindle {

/// An application object that draws alike on every machine: font, locale, time zone and renderer are pinned.
std::unique_ptr<QGuiApplication> pinnedApplication(int &argc, char **argv);

/// The island in this state; `scale` is in device pixels for each point.
QImage pictureOf(const ScreenState &state, double scale);

} // namespace brindle
