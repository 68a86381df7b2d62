#pragma once

#include "platform/EventMonitors.h"

#include <optional>

class QEvent;
class QWindow;

namespace brindle {

/// An event that came to one of the program's windows, in the terms of the monitors; absent for kinds that
/// none watches.
std::optional<InputEvent> localInputEvent(const QWindow &window, const QEvent &event);

} // namespace brindle
