#include "platform/linux/x11/ScrollGesture.h"

namespace brindle {

namespace {

/// Seconds without a scroll after which the fingers count as lifted: several reports of a slow touchpad.
constexpr double restTime = 0.15;

} // namespace

ScrollGesture::ScrollGesture(Scheduler &scheduler, std::function<void(const InputEvent &)> end)
    : m_scheduler(scheduler)
    , m_end(std::move(end))
{ }

void ScrollGesture::mark(InputEvent &event)
{
    if (event.kind != EventKind::scrollWheel || !event.hasPreciseScrollingDeltas
        || event.phase != ScrollPhase::none || event.momentumPhase != ScrollPhase::none)
        return;
    event.phase = m_rest.isPending() ? ScrollPhase::changed : ScrollPhase::began;
    m_rest = m_scheduler.after(restTime, [this, last = event]() mutable {
        last.phase = ScrollPhase::ended;
        last.scrollingDeltaX = last.scrollingDeltaY = 0;
        m_end(last);
    });
}

} // namespace brindle
