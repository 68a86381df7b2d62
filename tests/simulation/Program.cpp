#include "simulation/Program.h"

#include "activities/ActivityCoordinator.h"
#include "activities/SystemControlsService.h"
#include "core/SettingsStore.h"
#include "foundation/Geometry.h"
#include "island/IslandViewModel.h"

#include <array>
#include <thread>
#include <utility>

namespace brindle::simulation {

namespace {

/// Milliseconds.
constexpr int frameInterval = 100;

const QRectF sidebarBounds(10, 42, 54, 240);

const std::array<QList<Screen>, 5> displaySets{{
    {{.localizedName = QStringLiteral("Built-in"), .frame = QRectF(0, 0, 1512, 982), .safeAreaTop = 32}},
    {{.localizedName = QStringLiteral("Built-in"), .frame = QRectF(0, 0, 1512, 982), .safeAreaTop = 32},
        {.localizedName = QStringLiteral("Desk"), .frame = QRectF(1512, -100, 2560, 1440)}},
    {{.localizedName = QStringLiteral("Desk"), .frame = QRectF(0, 0, 2560, 1440)}},
    {{.localizedName = QStringLiteral("Odd"), .frame = QRectF(0, 0, 1367, 768)}},
    {},
}};

const std::array<BluetoothDevice, 4> devices{{
    {QStringLiteral("Headphones"), QStringLiteral("01:02")},
    {QStringLiteral("Mouse"), QStringLiteral("03:04")},
    {std::nullopt, std::nullopt},
    {QStringLiteral("Somebody's iPhone"), QStringLiteral("05:06")},
}};

InputEvent eventOf(EventKind kind)
{
    InputEvent event;
    event.kind = kind;
    return event;
}

} // namespace

HeadlessContent::HeadlessContent(IslandViewModel &viewModel, PanelWindow &panel)
    : m_viewModel(viewModel)
    , m_surface(viewModel)
{
    connect(&viewModel, &IslandViewModel::isExpandedChanged, this, &HeadlessContent::follow);
    const auto cut = [this, &panel] { panel.setInputShape(m_surface.outline()); };
    connect(&m_surface, &IslandSurface::shapeChanged, this, cut);
    cut();
}

void HeadlessContent::follow()
{
    m_sidebar.reset();
    if (!m_viewModel.isExpanded())
        return;
    m_sidebar = std::make_unique<SidebarNavigation>();
    m_sidebar->setViewModel(&m_viewModel);
    m_sidebar->setBounds(sidebarBounds);
}

Program::Program()
{
    platform.displays.set(displaySets.front());
    launch();
}

void Program::launch()
{
    m_container = std::make_unique<AppContainer>(platform);
    m_delegate =
        std::make_unique<AppDelegate>(*m_container, [this](IslandViewModel &viewModel, PanelWindow &panel) {
            auto content = std::make_unique<HeadlessContent>(viewModel, panel);
            m_content = content.get();
            return content;
        });
    m_delegate->applicationDidFinishLaunching();
    platform.time.runPosted();
    ++m_launches;
}

void Program::relaunch(bool isOrderly)
{
    if (isOrderly)
        m_delegate->applicationWillTerminate();
    m_delegate.reset();
    m_container.reset();
    m_isDragOver = false;
    m_interactions = 0;
    launch();
}

void Program::pass(double seconds)
{
    platform.time.advance(seconds);
    // A frame for each tenth of a second is enough for a shape that nobody looks at.
    for (int left = int(seconds * 1000); left > 0 && m_content->surface().isMoving(); left -= frameInterval)
        frames.advanceBy(std::min(left, frameInterval));
}

void Program::apply(const Event &event)
{
    switch (event.act) {
    case Act::movePointer:
        return movePointer(event);
    case Act::pressButton:
        return pressButton();
    case Act::releaseButton:
        return releaseButton(event);
    case Act::pickUpDrag:
        m_isCarrying = true;
        return pressButton();
    case Act::staleDrag:
        return staleDrag(event);
    case Act::tap:
        return tap();
    case Act::clickElsewhere:
        return clickElsewhere(event);
    case Act::toggle:
        platform.menu.choose(QStringLiteral("Toggle Island"));
        return watcher->openedByHand();
    case Act::pressKey:
        return pressKey(event);
    case Act::scroll:
        return scroll(event);
    case Act::beginInteraction:
    case Act::endInteraction:
        return changeInteraction(event.act == Act::beginInteraction);
    case Act::layOutZones:
        return layOutZones(event);
    case Act::changeSetting:
        return changeSetting(event);
    case Act::postActivity:
        return postActivity(event);
    case Act::changePower:
        return changePower(event);
    case Act::changeBluetooth:
        return changeBluetooth(event);
    case Act::changeBrightness:
        return changeBrightness(event);
    case Act::pressMediaKey:
        return pressMediaKey(event);
    case Act::changePermission:
        platform.monitoring.isGranted = event.x < 0.6;
        platform.keys.refusesMonitors = event.choice % 8 == 0;
        return;
    case Act::requestPermission:
        if (m_container->isStarted())
            m_container->systemControls().requestPermission();
        return;
    case Act::turnToProgram:
        return platform.host.becomeActive();
    case Act::changeReduceMotion:
        return platform.accessibility.setReduceMotion(event.choice % 2 == 0);
    case Act::changeScreens:
        return changeScreens(event);
    case Act::reportTrack:
        return media.report(event);
    case Act::endAdapter:
        return media.endAdapter(event);
    case Act::answerScripts:
        return media.answerScripts(event);
    case Act::hangScripts:
        return media.hangScripts(event);
    case Act::turnVolume:
        return media.turnVolume(event);
    case Act::commandMedia:
        return commandMedia(event);
    case Act::jumpClock:
        return platform.time.jumpWallClock((event.x - 0.5) * 40);
    case Act::stopOrStart:
        return m_container->isStarted() ? m_container->stop() : m_container->start();
    case Act::relaunch:
        return relaunch(event.choice % 2 == 0);
    }
}

QPointF Program::place(const Event &event)
{
    const QRectF island = controller().interactiveRectangle();
    const QRectF panel = controller().panel().window().frame();
    const auto within = [&event](const QRectF &rect) {
        return QPointF(rect.left() + event.x * rect.width(), rect.top() + event.y * rect.height());
    };
    switch (event.choice % 6) {
    case 0:
    case 1:
        return within(island);
    case 2:
        return within(panel);
    case 3: // on the edges
        return {
            event.x < 0.5 ? island.left() : island.right(), event.y < 0.5 ? island.top() : island.bottom()};
    case 4:
        return platform.input.location + QPointF(event.x * 20 - 10, event.y * 20 - 10);
    default:
        return within(QRectF(0, 0, 1512, 600));
    }
}

QPointF Program::inPanel(QPointF location)
{
    const QRectF panel = controller().panel().window().frame();
    return {location.x() - panel.left(), panel.bottom() - location.y()};
}

void Program::movePointer(const Event &event)
{
    platform.input.location = place(event);
    const bool isDragged = isButtonDown();
    const InputEvent motion = eventOf(isDragged ? EventKind::leftMouseDragged : EventKind::mouseMoved);
    const bool isOver = contains(controller().interactiveRectangle(), platform.input.location);
    if (isOver && !m_isCarrying)
        platform.input.sendLocal(motion);
    else
        platform.input.sendGlobal(motion);
    if (m_isCarrying)
        reportDrag();
}

void Program::reportDrag()
{
    const QPointF location = inPanel(platform.input.location);
    const bool isOver = contains(controller().interactiveRectangle(), platform.input.location);
    if (isOver || m_isDragOver)
        watcher->dragReported(isOver);
    if (isOver && !m_isDragOver)
        island().externalDragEntered(location);
    else if (isOver)
        island().externalDragUpdated(location);
    else if (m_isDragOver)
        island().externalDragExited();
    m_isDragOver = isOver;
}

void Program::pressButton()
{
    platform.input.buttons = 1;
    watcher->buttonPressed();
}

void Program::releaseButton(const Event &event)
{
    platform.input.buttons = 0;
    watcher->buttonReleased();
    const bool wasOver = std::exchange(m_isDragOver, false);
    m_isCarrying = false;
    if (!wasOver)
        return;
    const QPointF location = inPanel(platform.input.location);
    watcher->dragReported(event.choice % 4 == 3);
    // Mostly a drop; else the drag was given up, or its end went unheard.
    if (event.choice % 4 < 2)
        island().performExternalDrop(location);
    else if (event.choice % 4 == 2)
        island().externalDragExited();
    else
        island().externalDragUpdated(location);
}

void Program::staleDrag(const Event &event)
{
    if (isButtonDown() || m_isCarrying)
        return;
    watcher->dragReported(true);
    if (event.choice % 2 == 0 && !island().isExternalDragActive())
        island().externalDragEntered(inPanel(place(event)));
    else
        island().externalDragUpdated(inPanel(place(event)));
}

void Program::tap()
{
    if (island().isExpanded() || !contains(controller().interactiveRectangle(), platform.input.location))
        return;
    island().expand();
    watcher->openedByHand();
}

void Program::clickElsewhere(const Event &event)
{
    if (contains(controller().interactiveRectangle(), platform.input.location))
        return;
    platform.panel->isKey = false;
    platform.input.sendGlobal(
        eventOf(event.choice % 4 == 0 ? EventKind::rightMouseDown : EventKind::leftMouseDown));
}

void Program::pressKey(const Event &event)
{
    static constexpr std::array codes{KeyCode::upArrow, KeyCode::downArrow, KeyCode::space, KeyCode::other};
    InputEvent key = eventOf(EventKind::keyDown);
    key.keyCode = codes[event.choice % codes.size()];
    key.isARepeat = event.x < 0.2;
    if (event.y < 0.1)
        key.modifierFlags = ModifierFlag::shift;
    platform.panel->isTextFieldFocused = event.y > 0.9;
    platform.input.sendLocal(key);
}

void Program::scroll(const Event &event)
{
    static constexpr std::array phases{ScrollPhase::none, ScrollPhase::began, ScrollPhase::changed,
        ScrollPhase::changed, ScrollPhase::ended, ScrollPhase::cancelled};
    InputEvent wheel = eventOf(EventKind::scrollWheel);
    wheel.isInPanel = true;
    wheel.locationInPanel = event.choice % 5 == 0 ? QPointF(300, 100) : sidebarBounds.center();
    wheel.hasPreciseScrollingDeltas = event.choice % 3 != 0;
    wheel.phase = wheel.hasPreciseScrollingDeltas ? phases[event.choice % phases.size()] : ScrollPhase::none;
    wheel.momentumPhase = event.choice % 7 == 0 ? ScrollPhase::changed : ScrollPhase::none;
    wheel.scrollingDeltaX = (event.x - 0.5) * 60;
    wheel.scrollingDeltaY = (event.y - 0.5) * 300;
    platform.input.sendLocal(wheel);
}

void Program::changeInteraction(bool begins)
{
    if (begins) {
        ++m_interactions;
        island().beginInteraction();
        return;
    }
    // An end without a beginning would end the drag's own.
    if (m_interactions == 0 && island().isExternalDragActive())
        return;
    m_interactions = std::max(m_interactions - 1, 0);
    watcher->interactionEnded();
    island().endInteraction();
}

void Program::layOutZones(const Event &event)
{
    IslandExternalDropFrames zones;
    if (event.choice % 4 != 0)
        zones.storage = QRectF(80, 50, 100 + event.x * 300, 200);
    if (event.choice % 4 < 2)
        zones.airDrop = QRectF(100 + event.y * 500, 50, 300, 200);
    island().dropFramesChanged(zones);
}

void Program::changeSetting(const Event &event)
{
    SettingsStore &settings = m_container->settings();
    const auto pick = [&event](auto... values) {
        const std::array list{values...};
        return list[std::size_t(event.x * double(list.size()))];
    };
    const bool isOn = event.x < 0.7;
    switch (event.choice % 17) {
    case 0:
        return settings.setOpenOnHover(isOn);
    case 1:
        return settings.setHoverDelay(pick(-1.0, 0.0, 0.01, 0.011, 0.05, 0.4));
    case 2:
        return settings.setCollapseDelay(pick(0.0, 0.05, 0.2, 0.2, 1.5));
    case 3:
        return settings.setReduceEffects(!isOn);
    case 4:
        return settings.setShowMediaTab(isOn);
    case 5:
    case 6:
        return settings.setShowShelfTab(isOn);
    case 7:
        return settings.setShowCalculatorTab(isOn);
    case 8:
        return settings.setShowAssistantTab(isOn);
    case 9:
        return settings.setShowShelfPanel(isOn);
    case 10:
        return settings.setShowMediaPlayer(isOn);
    case 11:
        return settings.setCollapsedWidth(pick(120.0, 260.0, 260.0, 420.0));
    case 12:
        return settings.setCollapsedHeight(pick(24.0, 38.0, 38.0, 60.0));
    case 13:
    case 14:
        return settings.setSystemControlsEnabled(isOn);
    case 15:
        return settings.setCollapsedActivityExpansion(pick(-50.0, 0.0, 108.0, 108.0));
    default:
        static constexpr std::array names{u"Automatic", u"Built-in", u"Desk", u"Nowhere"};
        return settings.setSelectedDisplayName(
            QString::fromUtf16(names[std::size_t(event.x * names.size())]));
    }
}

void Program::postActivity(const Event &event)
{
    struct Kind
    {
        ActivityType type;
        ActivityPriority priority;
        double duration;
    };
    static constexpr std::array kinds{
        Kind{ActivityType::systemControl, ActivityPriority::systemControl, 1.45},
        Kind{ActivityType::systemControl, ActivityPriority::systemControl, 1.45},
        Kind{ActivityType::charging, ActivityPriority::charging, 4},
        Kind{ActivityType::peripheral, ActivityPriority::peripheral, 3.5},
        Kind{ActivityType::critical, ActivityPriority::critical, 2},
        Kind{ActivityType::media, ActivityPriority::media, 0},
        Kind{ActivityType::idle, ActivityPriority::idle, -1},
    };
    static const std::array levelIDs{QUuid::createUuid(), QUuid::createUuid()};
    const Kind kind = kinds[event.choice % kinds.size()];
    const bool isLevel = kind.type == ActivityType::systemControl;
    SystemActivity activity;
    activity.id = isLevel ? levelIDs[event.choice / 16 % 2] : QUuid::createUuid();
    activity.type = kind.type;
    activity.priority = kind.priority;
    activity.createdAt = platform.time.now();
    activity.duration = kind.duration;
    activity.content.title = QStringLiteral("Simulated %1").arg(++m_posted);
    if (isLevel)
        activity.content.progress = event.x;
    if (event.y < 0.05) {
        std::thread([&] { m_container->activities().post(activity); }).join();
        return;
    }
    m_container->activities().post(activity);
}

void Program::changePower(const Event &event)
{
    const bool isOnMains = event.x < 0.5;
    const QVariantMap battery =
        FakePowerSources::battery(int(event.y * 101), isOnMains, isOnMains && event.choice % 2 == 0);
    if (event.choice % 8 == 0)
        platform.power.set(std::nullopt);
    else if (event.choice % 8 == 1)
        platform.power.set(QList<std::optional<QVariantMap>>{std::nullopt});
    else
        platform.power.set(QList<std::optional<QVariantMap>>{battery});
}

void Program::changeBluetooth(const Event &event)
{
    const unsigned device = event.choice % devices.size();
    if (m_connectedDevices.erase(device) != 0) {
        platform.bluetooth.disconnectDevice(devices[device]);
        return;
    }
    m_connectedDevices.insert(device);
    platform.bluetooth.connectDevice(devices[device]);
}

void Program::changeBrightness(const Event &event)
{
    platform.brightness.set(event.choice % 6 == 0 ? std::nullopt : std::optional(event.x));
}

// A person cannot press twice in one moment.
void Program::pressMediaKey(const Event &event)
{
    if (std::exchange(m_lastMediaKey, platform.time.uptime()) == platform.time.uptime())
        return;
    static constexpr std::array keys{MediaKeyCode::soundUp, MediaKeyCode::soundDown, MediaKeyCode::mute,
        MediaKeyCode::brightnessUp, MediaKeyCode::brightnessDown, 4L};
    platform.keys.press(keys[event.choice % keys.size()]);
}

void Program::changeScreens(const Event &event)
{
    platform.displays.set(displaySets[event.choice % displaySets.size()]);
}

void Program::commandMedia(const Event &event)
{
    MediaProvider &player = m_container->media();
    switch (event.choice % 4) {
    case 0:
        return player.togglePlayback();
    case 1:
        return player.seek(event.x * 220 - 10);
    case 2:
        return player.previousTrack();
    default:
        return player.nextTrack();
    }
}

} // namespace brindle::simulation
