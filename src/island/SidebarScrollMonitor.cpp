#include "island/SidebarScrollMonitor.h"

#include "foundation/Geometry.h"
#include "platform/Haptics.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace brindle {

namespace {

/// Points of a swipe, and notches of a wheel, that make one step.
constexpr double swipeThreshold = 84;
constexpr double wheelThreshold = 2;
/// What moves no farther than this did not move.
constexpr double smallestDelta = 0.01;

/// The greater of the two movements; the vertical one where they are equal.
double dominantDelta(const InputEvent &event)
{
    return std::abs(event.scrollingDeltaX) > std::abs(event.scrollingDeltaY) ? event.scrollingDeltaX
                                                                             : event.scrollingDeltaY;
}

} // namespace

SidebarScrollMonitor::SidebarScrollMonitor(
    EventMonitors &eventMonitors, Haptics &haptics, Callbacks callbacks)
    : m_eventMonitors(eventMonitors)
    , m_haptics(haptics)
    , m_callbacks(std::move(callbacks))
{ }

void SidebarScrollMonitor::start()
{
    if (m_monitor)
        return;
    m_monitor =
        m_eventMonitors.addLocalMonitor(eventMask(EventKind::scrollWheel), [this](const InputEvent &event) {
            scrollWheel(event);
            return EventMonitors::Disposition::pass;
        });
}

void SidebarScrollMonitor::stop()
{
    m_monitor.reset();
}

void SidebarScrollMonitor::scrollWheel(const InputEvent &event)
{
    if (!m_bounds || !event.isInPanel || !contains(*m_bounds, event.locationInPanel))
        return;
    if ((event.phase & ScrollPhase::began) != 0)
        m_accumulatedDelta = 0;
    if ((event.phase & (ScrollPhase::ended | ScrollPhase::cancelled)) != 0) {
        endGesture();
        return;
    }
    // What rolls on by itself after the fingers left never steps a tab.
    if (event.momentumPhase != ScrollPhase::none)
        return;
    const double delta = dominantDelta(event);
    if (std::abs(delta) > smallestDelta)
        scrollBy(delta, event.hasPreciseScrollingDeltas);
}

void SidebarScrollMonitor::scrollBy(double delta, bool isPrecise)
{
    const double threshold = isPrecise ? swipeThreshold : wheelThreshold;
    m_accumulatedDelta += isPrecise ? delta : std::copysign(1, delta);
    reportProgress(threshold);
    if (std::abs(m_accumulatedDelta) < threshold)
        return;
    const bool isTowardsNext = m_accumulatedDelta < 0;
    // The overshoot counts for the next step; one event never makes two.
    m_accumulatedDelta = std::fmod(m_accumulatedDelta, threshold);
    m_haptics.performFeedback(Haptics::Pattern::alignment, Haptics::PerformanceTime::now);
    m_callbacks.selectAdjacent(isTowardsNext ? 1 : -1);
    reportProgress(threshold);
    // A wheel never says that it has come to rest.
    if (!isPrecise)
        endGesture();
}

void SidebarScrollMonitor::endGesture()
{
    m_accumulatedDelta = 0;
    m_callbacks.gestureEnded();
}

void SidebarScrollMonitor::reportProgress(double threshold) const
{
    m_callbacks.progressChanged(std::clamp(-m_accumulatedDelta / threshold, -1.0, 1.0));
}

} // namespace brindle
