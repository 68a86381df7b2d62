#pragma once

#include "foundation/Scheduler.h"
#include "platform/EventMonitors.h"

#include <functional>

namespace brindle {

/// Gives smooth scrolls the phases that the X server does not tell: a gesture begins with the first scroll
/// after a rest and ends when the fingers have rested for a moment.
///
/// The end is an event of its own without a length, handed to `end`. At rest it costs nothing. Main thread.
class ScrollGesture
{
public:
    ScrollGesture(Scheduler &scheduler, std::function<void(const InputEvent &)> end);

    /// Sets the phase of a smooth scroll that has none; leaves all other events as they are.
    void mark(InputEvent &event);

private:
    Scheduler &m_scheduler;
    std::function<void(const InputEvent &)> m_end;
    Delay m_rest;
};

} // namespace brindle
