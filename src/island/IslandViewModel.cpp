#include "island/IslandViewModel.h"

#include "core/AppContainer.h"
#include "core/SettingsStore.h"
#include "core/ShelfDropTarget.h"
#include "foundation/Geometry.h"
#include "platform/AccessibilitySettings.h"
#include "platform/EventMonitors.h"
#include "platform/Haptics.h"
#include "platform/Platform.h"

#include <algorithm>
#include <limits>

namespace brindle {

namespace {

/// A hover delay up to this many seconds opens at once.
constexpr double instantHoverDelay = 0.01;
/// Seconds that a drag may be away before it counts as gone, and between two looks at its button.
constexpr double dragExitInterval = 0.12;
/// Seconds that the button must have been up before a drag counts as over.
constexpr double dragMouseUpDelay = 0.22;
/// Seconds for which a zone still takes a drop after the pointer left it.
constexpr double dropGrace = 0.3;

constexpr quint32 primaryButton = 1;

} // namespace

IslandViewModel::IslandViewModel(AppContainer &container, ShelfDropTarget *shelf, QObject *parent)
    : QObject(parent)
    , m_container(container)
    , m_shelf(shelf)
{ }

void IslandViewModel::animate(const Motion &motion, const std::function<void()> &change)
{
    const Motion outer = std::exchange(m_motionOfChanges, motion);
    change();
    m_motionOfChanges = outer;
}

bool IslandViewModel::reducesEffects() const
{
    return m_container.settings().reduceEffects()
        || m_container.platform().accessibilitySettings().reduceMotion();
}

void IslandViewModel::pointerEntered()
{
    setPointerInside(true);
    m_collapseTask.cancel();
    if (!m_container.settings().openOnHover() || m_isExpanded)
        return;
    m_hoverTask.cancel();
    const double delay = m_container.settings().hoverDelay();
    if (delay <= instantHoverDelay) {
        openWithHaptic();
        return;
    }
    m_hoverTask = scheduler().after(delay, [this] {
        if (m_isPointerInside)
            openWithHaptic();
    });
}

void IslandViewModel::pointerExited()
{
    setPointerInside(false);
    m_hoverTask.cancel();
    if (!m_isExpanded)
        return;
    m_collapseTask = scheduler().after(m_container.settings().collapseDelay(), [this] {
        if (!m_isPointerInside && m_interactionDepth < 1)
            setExpanded(false);
    });
}

void IslandViewModel::expand()
{
    m_hoverTask.cancel();
    m_collapseTask.cancel();
    setExpanded(true);
}

void IslandViewModel::collapse(bool force)
{
    m_hoverTask.cancel();
    m_collapseTask.cancel();
    if (!force && m_interactionDepth > 0)
        return;
    setExpanded(false);
}

void IslandViewModel::toggle()
{
    m_hoverTask.cancel();
    m_collapseTask.cancel();
    setExpanded(!m_isExpanded);
}

void IslandViewModel::selectAdjacentTab(int offset)
{
    const QList<IslandTab> tabs = m_container.settings().visibleTabs();
    const qsizetype index = tabs.indexOf(m_selectedTab);
    if (index < 0)
        return;
    setSelectedTab(tabs[(index + offset + tabs.size()) % tabs.size()]);
}

void IslandViewModel::beginInteraction()
{
    Q_ASSERT(m_interactionDepth < std::numeric_limits<int>::max());
    setInteractionDepth(m_interactionDepth + 1);
    m_collapseTask.cancel();
}

void IslandViewModel::endInteraction()
{
    setInteractionDepth(std::max(m_interactionDepth - 1, 0));
    // What ended away from the island starts the ordinary way to its closing.
    if (!m_isPointerInside)
        pointerExited();
}

std::optional<IslandExternalDropZone> IslandViewModel::dropZone(QPointF location) const
{
    if (m_externalDropFrames.storage && contains(*m_externalDropFrames.storage, location))
        return IslandExternalDropZone::storage;
    if (m_externalDropFrames.airDrop && contains(*m_externalDropFrames.airDrop, location))
        return IslandExternalDropZone::airDrop;
    return std::nullopt;
}

void IslandViewModel::updateActiveDropZone(QPointF location)
{
    const std::optional<IslandExternalDropZone> zone = dropZone(location);
    if (zone == m_activeExternalDropZone)
        return;
    setActiveExternalDropZone(zone);
    if (zone) {
        m_lastExternalDropZone = zone;
        m_lastExternalDropZoneDate = scheduler().now();
    }
}

// A drag that ends away from every target is announced to nobody, so its button is watched.
void IslandViewModel::watchExternalDragMouseUp()
{
    if (isPrimaryButtonDown()) {
        m_externalDragMouseUpTask.cancel();
        return;
    }
    if (!m_isExternalDragActive)
        return;
    m_externalDragMouseUpTask = scheduler().after(dragMouseUpDelay, [this] {
        if (!isPrimaryButtonDown())
            endExternalDrag();
    });
}

void IslandViewModel::externalDragEntered(QPointF location)
{
    m_externalDragExitTask.cancel();
    const SettingsStore &settings = m_container.settings();
    const bool isShelfInReach = settings.showShelfTab() && settings.showShelfPanel();
    // No button and no drag: a callback that came too late.
    const bool isStale = !m_isExternalDragActive && !isPrimaryButtonDown();
    if (!isShelfInReach || isStale) {
        setActiveExternalDropZone(std::nullopt);
        return;
    }
    m_lastExternalDragLocation = location;
    if (!m_isExternalDragActive)
        startExternalDrag();
    updateActiveDropZone(location);
    watchExternalDragMouseUp();
}

void IslandViewModel::startExternalDrag()
{
    setActiveExternalDropZone(std::nullopt);
    m_lastExternalDropZone = std::nullopt;
    m_lastExternalDropZoneDate = Date::distantPast();
    setExternalDragActive(true);
    setInteractionDepth(m_interactionDepth + 1);
    m_collapseTask.cancel();
    m_hoverTask.cancel();
    setSelectedTab(IslandTab::shelf);
    setExpanded(true);
}

void IslandViewModel::externalDragUpdated(QPointF location)
{
    m_externalDragExitTask.cancel();
    if (!m_isExternalDragActive && !isPrimaryButtonDown()) {
        setActiveExternalDropZone(std::nullopt);
        return;
    }
    m_lastExternalDragLocation = location;
    updateActiveDropZone(location);
    watchExternalDragMouseUp();
}

void IslandViewModel::externalDragExited()
{
    m_externalDragExitTask = scheduler().after(dragExitInterval, [this] {
        setActiveExternalDropZone(std::nullopt);
        endExternalDragOnceReleased();
    });
}

// As long as the drag is carried the island stays open, even with the drag away from it.
void IslandViewModel::endExternalDragOnceReleased()
{
    if (isPrimaryButtonDown())
        m_externalDragExitTask =
            scheduler().after(dragExitInterval, [this] { endExternalDragOnceReleased(); });
    else
        endExternalDrag();
}

void IslandViewModel::endExternalDrag()
{
    m_externalDragExitTask.cancel();
    m_externalDragMouseUpTask.cancel();
    setActiveExternalDropZone(std::nullopt);
    m_lastExternalDragLocation = std::nullopt;
    m_lastExternalDropZone = std::nullopt;
    m_lastExternalDropZoneDate = Date::distantPast();
    if (m_isExternalDragActive) {
        setExternalDragActive(false);
        endInteraction();
    }
}

void IslandViewModel::dropFramesChanged(const IslandExternalDropFrames &frames)
{
    m_externalDropFrames = frames;
    // The zones come into being under a resting pointer when the island opens.
    if (m_isExternalDragActive && m_lastExternalDragLocation)
        updateActiveDropZone(*m_lastExternalDragLocation);
}

bool IslandViewModel::performExternalDrop(QPointF location, const QMimeData *items)
{
    const bool isTaken = deliverDrop(location, items);
    endExternalDrag();
    return isTaken;
}

bool IslandViewModel::deliverDrop(QPointF location, const QMimeData *items)
{
    if (!m_isExternalDragActive || m_selectedTab != IslandTab::shelf)
        return false;
    const std::optional<IslandExternalDropZone> zone = zoneOfDrop(location);
    if (!zone || !m_shelf)
        return false;
    if (zone == IslandExternalDropZone::airDrop)
        return m_shelf->sendByAirDrop(items);
    // What came out of the shelf is there already.
    return m_shelf->hasActiveManagedDrag() || m_shelf->importItems(items);
}

std::optional<IslandExternalDropZone> IslandViewModel::zoneOfDrop(QPointF location) const
{
    if (const auto zone = dropZone(location))
        return zone;
    if (m_activeExternalDropZone)
        return m_activeExternalDropZone;
    // A release just past the edge of a zone was meant for it.
    if (scheduler().now() - m_lastExternalDropZoneDate <= dropGrace)
        return m_lastExternalDropZone;
    return std::nullopt;
}

Scheduler &IslandViewModel::scheduler() const
{
    return m_container.platform().scheduler();
}

void IslandViewModel::openWithHaptic()
{
    setExpanded(true);
    if (!reducesEffects())
        m_container.platform().haptics().performFeedback(
            Haptics::Pattern::levelChange, Haptics::PerformanceTime::now);
}

bool IslandViewModel::isPrimaryButtonDown() const
{
    return (m_container.platform().eventMonitors().pressedMouseButtons() & primaryButton) != 0;
}

void IslandViewModel::setSelectedTab(IslandTab tab)
{
    if (m_selectedTab == tab)
        return;
    m_selectionMotion = m_motionOfChanges;
    m_selectedTab = tab;
    Q_EMIT selectedTabChanged();
}

void IslandViewModel::setExpanded(bool expanded)
{
    if (m_isExpanded == expanded)
        return;
    m_isExpanded = expanded;
    Q_EMIT isExpandedChanged();
}

void IslandViewModel::setPointerInside(bool inside)
{
    if (m_isPointerInside == inside)
        return;
    m_isPointerInside = inside;
    Q_EMIT isPointerInsideChanged();
}

void IslandViewModel::setInteractionDepth(int depth)
{
    if (m_interactionDepth == depth)
        return;
    m_interactionDepth = depth;
    Q_EMIT interactionDepthChanged();
}

void IslandViewModel::setExternalDragActive(bool active)
{
    if (m_isExternalDragActive == active)
        return;
    m_isExternalDragActive = active;
    Q_EMIT isExternalDragActiveChanged();
}

void IslandViewModel::setActiveExternalDropZone(std::optional<IslandExternalDropZone> zone)
{
    if (m_activeExternalDropZone == zone)
        return;
    m_activeExternalDropZone = zone;
    Q_EMIT activeExternalDropZoneChanged();
}

} // namespace brindle
