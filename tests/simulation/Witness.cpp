#include "simulation/Witness.h"

#include "activities/ActivityCoordinator.h"
#include "activities/BatteryMonitor.h"
#include "activities/BluetoothMonitor.h"
#include "activities/SystemControlsService.h"
#include "core/SettingsStore.h"
#include "foundation/Geometry.h"
#include "media/SystemMediaService.h"

#include <algorithm>

namespace brindle::simulation {

namespace {

/// Seconds by which sums of times may be off.
constexpr double rounding = 1e-6;
/// Seconds after which a drag is over for sure: its two waits, once around.
constexpr double dragEnd = 0.12 + 0.22;

/// Seconds by which a change of the volume is seen.
constexpr double volumePoll = 0.16;

constexpr int monitorsOfTheController = 4;

} // namespace

Witness::Witness(Program &program) : m_program(program), m_island(program.island())
{
    connect(&program.container().activities(), &ActivityCoordinator::currentChanged, this,
        &Witness::currentActivityChanged);
    for (const auto signal : {&IslandViewModel::isExpandedChanged, &IslandViewModel::isPointerInsideChanged,
             &IslandViewModel::interactionDepthChanged, &IslandViewModel::isExternalDragActiveChanged})
        connect(&m_island, signal, this, &Witness::islandChanged);
    program.watcher = this;
}

Witness::~Witness()
{
    m_program.watcher = nullptr;
}

double Witness::uptime() const
{
    return m_program.platform.time.uptime();
}

void Witness::expect(bool holds, const QString &otherwise)
{
    if (!holds && !m_complaint)
        m_complaint = otherwise;
}

Witness::Key Witness::keyOf(const SystemActivity &activity)
{
    return QStringLiteral("%1 %2 %3")
        .arg(activity.id.toString(), activity.content.title,
            QString::number(activity.createdAt.secondsSince1970(), 'g', 17));
}

void Witness::currentActivityChanged()
{
    const auto &current = m_program.container().activities().current();
    const auto last = std::exchange(m_shown, std::nullopt);
    if (!current) {
        if (last)
            expect(std::abs(uptime() - last->since - last->duration) < rounding,
                QStringLiteral("'%1' was on screen for %2 s").arg(last->key).arg(uptime() - last->since));
        return;
    }
    const Key key = keyOf(*current);
    const double duration = std::max(current->duration, 0.1);
    if (m_waiting.contains(key))
        expect(m_program.platform.time.now() - current->createdAt <= 2 * duration + rounding,
            QStringLiteral("'%1' is shown though it is stale").arg(key));
    m_shown = Shown{key, uptime(), duration};
}

void Witness::islandChanged()
{
    const bool isOpen = m_island.isExpanded();
    if (!isOpen || m_island.isPointerInside())
        m_isOpenByHand = false;
    const bool isHeld =
        !isOpen || m_island.isPointerInside() || m_island.interactionDepth() > 0 || m_isOpenByHand;
    if (isHeld)
        m_closesBy.reset();
    else if (!m_closesBy)
        m_closesBy = uptime() + std::max(m_program.container().settings().collapseDelay(), 0.0);
    if (!m_island.isExternalDragActive())
        m_dragEndsBy.reset();
}

void Witness::openedByHand()
{
    m_isOpenByHand = m_island.isExpanded() && !m_island.isPointerInside();
    m_closesBy.reset();
}

void Witness::interactionEnded()
{
    m_isOpenByHand = false;
    m_closesBy.reset();
}

void Witness::check(bool isSettled)
{
    checkActivities();
    checkIsland();
    checkDrag();
    checkMedia();
    checkDelays();
    checkShape();
    if (isSettled) {
        checkServices();
        checkSettledMedia();
        checkLevels();
        checkPanel();
    }
}

void Witness::checkActivities()
{
    const ActivityCoordinator &activities = m_program.container().activities();
    QSet<Key> present;
    QSet<Key> waiting;
    for (const SystemActivity &activity : activities.queue()) {
        const Key key = keyOf(activity);
        expect(!waiting.contains(key), QStringLiteral("'%1' waits twice").arg(key));
        waiting.insert(key);
    }
    present = waiting;
    if (const auto &current = activities.current()) {
        const Key key = keyOf(*current);
        expect(!waiting.contains(key), QStringLiteral("'%1' waits while it is on screen").arg(key));
        expect(m_shown && uptime() - m_shown->since <= m_shown->duration + rounding,
            QStringLiteral("'%1' is on screen for longer than its time").arg(key));
        present.insert(key);
    }
    expect(activities.isExpiryPending() == activities.current().has_value(),
        QStringLiteral("the pending end belongs to no activity on screen, or the other way round"));
    expect(!present.intersects(m_gone), QStringLiteral("an activity that was gone came back"));
    m_gone += m_known - present;
    m_known = present;
    m_waiting = waiting;
}

void Witness::checkIsland()
{
    islandChanged();
    const int depth = m_island.interactionDepth();
    expect(depth >= 0, QStringLiteral("the depth is %1").arg(depth));
    expect(depth == m_program.interactions() + (m_island.isExternalDragActive() ? 1 : 0),
        QStringLiteral("the depth is %1 with %2 interactions%3")
            .arg(depth)
            .arg(m_program.interactions())
            .arg(m_island.isExternalDragActive() ? QStringLiteral(" and a drag") : QString()));
    if (m_closesBy) {
        expect(
            uptime() <= *m_closesBy + rounding, QStringLiteral("the island is open with nothing holding it"));
        expect(m_island.isCollapsePending(),
            QStringLiteral("nothing holds the island open and nothing is going to close it"));
    }
    if (m_island.isHoverPending())
        expect(m_island.isPointerInside() && !m_island.isExpanded() && !m_island.isCollapsePending(),
            QStringLiteral("an opening is pending without reason"));
    expect(m_program.content().isOpen() == m_island.isExpanded(),
        QStringLiteral("the content is not as the island"));
    if (m_island.isExpanded())
        expect(m_program.container().settings().visibleTabs().contains(m_island.selectedTab()),
            QStringLiteral("the open island shows a tab that is hidden"));
}

void Witness::checkPointer()
{
    const bool isInside =
        contains(m_program.controller().interactiveRectangle(), m_program.platform.input.location);
    expect(m_island.isPointerInside() == isInside,
        isInside ? QStringLiteral("the pointer is in the island unnoticed")
                 : QStringLiteral("the pointer left the island unnoticed"));
}

void Witness::checkServices()
{
    AppContainer &container = m_program.container();
    expect(container.battery().isObserving() == container.isStarted()
            && container.bluetooth().isObserving() == container.isStarted(),
        QStringLiteral("a monitor watches in a stopped program, or rests in a started one"));
    const auto sources = m_program.platform.power.sources();
    if (!container.isStarted() || !sources || !sources->constFirst())
        return;
    const QVariantMap battery = *sources->constFirst();
    expect(container.battery().percentage() == battery.value(PowerSourceKey::currentCapacity).toInt(),
        QStringLiteral("the battery's charge was missed"));
    expect(container.battery().isACConnected()
            == (battery.value(PowerSourceKey::powerSourceState) == PowerSourceValue::acPower),
        QStringLiteral("the mains were missed"));
}

// What plays

const SystemMediaService &Witness::media() const
{
    return dynamic_cast<const SystemMediaService &>(m_program.container().media());
}

void Witness::checkMedia()
{
    const auto &sessions = media().sessions();
    const auto &shown = media().nowPlaying();
    expect(shown.has_value() != sessions.empty(),
        QStringLiteral("%1 sources are known, but something is shown or not").arg(sessions.size()));
    if (shown) {
        const auto session = sessions.find(shown->sessionKey());
        expect(session != sessions.end() && session->second.track == *shown,
            QStringLiteral("what is shown is no source's track"));
        expect(!shown->title.isEmpty(), QStringLiteral("a track without a title is shown"));
    }
    const QStringList applications = SimulatedMedia::scriptedApplications();
    for (const auto &[key, session] : sessions)
        expect(key == media().remoteSessionKey() || applications.contains(key),
            QStringLiteral("'%1' was reported by an adapter that reports something else by now").arg(key));
}

void Witness::checkSettledMedia()
{
    expect(media().isStarted() == m_program.container().isStarted(),
        QStringLiteral("media runs in a stopped program, or rests in a started one"));
    expect(m_program.platform.audio.isObserved() == media().isStarted(),
        QStringLiteral("the volume is followed in a stopped program, or not in a started one"));
    if (!media().isStarted())
        return;
    const bool isAdapterRunning = m_program.media.isAdapterRunning();
    expect(media().supportsTransportControls() == isAdapterRunning,
        QStringLiteral("the adapter's start or end was missed"));
    expect(isAdapterRunning || !media().remoteSessionKey(),
        QStringLiteral("an adapter that has ended is still shown"));
    expect(isAdapterRunning || media().pollsPending() > 0,
        QStringLiteral("without an adapter nobody asks the applications"));
    const auto level = m_program.platform.audio.level();
    if (!level || uptime() <= m_program.media.volumeTurnedAt() + volumePoll + rounding)
        return;
    const double audible = level->muted ? 0 : std::clamp(level->level, 0.0, 1.0);
    expect(std::abs(media().outputVolume() - audible) <= 0.005,
        QStringLiteral("the volume is %1, and %2 is shown").arg(audible).arg(media().outputVolume()));
}

// Switched off, the service is as if it were not there; switched on, it follows the levels, and the keys
// exactly when it says so.
void Witness::checkLevels()
{
    using State = SystemControlsService::PermissionState;
    const AppContainer &container = m_program.container();
    const SystemControlsService &levels = container.systemControls();
    const FakePlatform &platform = m_program.platform;
    const bool isOn = container.isStarted() && container.settings().systemControlsEnabled();
    expect(levels.isObservingLevels() == isOn && platform.brightness.isObserved() == isOn,
        QStringLiteral("the levels are watched with the setting off, or not watched with it on"));
    expect((levels.permissionState() == State::disabled) != isOn,
        QStringLiteral("the permission is disabled with the setting on, or the other way round"));
    expect(platform.keys.isObserved() == (levels.permissionState() == State::authorized),
        QStringLiteral("the keys are watched without the permission, or not watched with it"));
    expect(isOn || levels.delaysPending() == 0, QStringLiteral("something waits with the setting off"));
    expect(levels.permissionState() != State::requesting || levels.isAwaitingPermission(),
        QStringLiteral("a permission was asked for and nobody waits for it"));
}

void Witness::checkPanel()
{
    FakePlatform &platform = m_program.platform;
    expect(!platform.panel->isKeyWindow() || m_island.isExpanded(),
        QStringLiteral("the closed island has the keyboard"));
    expect(platform.input.localMonitorCount() + platform.input.globalMonitorCount()
            == monitorsOfTheController + (m_island.isExpanded() ? 1 : 0),
        QStringLiteral("the number of monitors is wrong"));
    const QList<Screen> screens = platform.displays.screens();
    if (screens.isEmpty())
        return;
    const QString name = m_program.container().settings().selectedDisplayName();
    const QRectF frame = platform.panel->frame();
    const auto isThere = [&frame](const Screen &screen) { return frame == IslandPanel::frameOn(screen); };
    const auto named = std::find_if(screens.begin(), screens.end(),
        [&name](const Screen &screen) { return screen.localizedName == name; });
    expect(named != screens.end() ? isThere(*named) : std::any_of(screens.begin(), screens.end(), isThere),
        QStringLiteral("the panel is not where it belongs"));
}

// What takes the pointer, what is drawn, and what the state asks for are one and the same shape.
void Witness::checkShape()
{
    const IslandSurface &surface = m_program.content().surface();
    const QRectF panel = m_program.platform.panel->frame();
    const QRectF rectangle = m_program.controller().interactiveRectangle();
    const QSizeF asked = surface.targetSize().boundedTo(panel.size());
    expect(rectangle.size() == asked,
        QStringLiteral("the pointer meets %1 by %2, but %3 by %4 is to be drawn")
            .arg(rectangle.width())
            .arg(rectangle.height())
            .arg(asked.width())
            .arg(asked.height()));
    expect(m_program.platform.panel->inputShape == surface.outline(),
        QStringLiteral("the input shape is not the drawn one"));
    if (surface.isMoving())
        return;
    const QRectF drawn = surface.outline().boundingRect();
    expect(std::abs(drawn.width() - surface.targetSize().width()) < rounding
            && std::abs(drawn.height() - surface.targetSize().height()) < rounding,
        QStringLiteral("the shape came to rest at %1 by %2").arg(drawn.width()).arg(drawn.height()));
    expect(std::abs(drawn.center().x() - IslandSurface::panelSize.width() / 2) < rounding
            && std::abs(drawn.top()) < rounding,
        QStringLiteral("the shape came to rest off the top centre"));
}

// Whatever else waits was forgotten by somebody.
void Witness::checkDelays()
{
    const int drags = m_island.isExternalDragTaskPending() ? 1 : 0;
    const int known = int(m_island.isHoverPending()) + int(m_island.isCollapsePending()) + drags
        + int(m_program.container().activities().isExpiryPending()) + media().pollsPending()
        + m_program.container().systemControls().delaysPending()
        + int(m_program.content().surface().isRevealPending());
    const auto pending = m_program.platform.time.pendingCount();
    expect(pending >= known && pending <= known + drags,
        QStringLiteral("%1 delays wait, but %2 are known of").arg(pending).arg(known));
}

// Drags

void Witness::dragReported(bool isInside)
{
    m_hasDragLeft = !isInside;
    if (!m_program.isButtonDown())
        m_dragEndsBy = uptime() + dragEnd;
}

void Witness::buttonPressed()
{
    m_dragEndsBy.reset();
}

void Witness::buttonReleased()
{
    // A drag that left is looked after until its end; of one that never left, only what is reported is known.
    if (m_island.isExternalDragActive() && m_hasDragLeft)
        m_dragEndsBy = uptime() + dragEnd;
}

void Witness::checkDrag()
{
    expect(!m_dragEndsBy || !m_island.isExternalDragActive() || uptime() <= *m_dragEndsBy + rounding,
        QStringLiteral("a drag goes on though its button is up"));
}

} // namespace brindle::simulation
