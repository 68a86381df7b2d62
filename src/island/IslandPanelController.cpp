#include "island/IslandPanelController.h"

#include "activities/ActivityCoordinator.h"
#include "core/AppContainer.h"
#include "core/SettingsStore.h"
#include "foundation/Geometry.h"
#include "foundation/NotificationCenter.h"
#include "media/MediaProvider.h"
#include "platform/Platform.h"

#include <algorithm>

namespace brindle {

namespace {

/// The display setting that leaves the choice to the program.
const QString automaticDisplay = QStringLiteral("Automatic");

constexpr auto arrowKeyMotion = Motion::makeSpring(0.36, 0.82, 0);

} // namespace

IslandPanelController::IslandPanelController(AppContainer &container, const PanelContentFactory &makeContent)
    : m_container(container)
    , m_viewModel(container)
    , m_panel(container.platform())
{
    if (makeContent)
        m_content = makeContent(m_viewModel, m_panel.window());
    setUpObservations();
    setUpMonitors();
    setUpObservers();
}

IslandPanelController::~IslandPanelController()
{
    m_outsideClickMonitor.reset();
    m_keyDownMonitor.reset();
    m_localPointerMonitor.reset();
    m_globalPointerMonitor.reset();
    disconnect(m_screenObserver);
    m_toggleObserver.reset();
}

void IslandPanelController::show()
{
    if (const auto screen = chooseScreen())
        m_panel.window().setFrame(IslandPanel::frameOn(*screen), PanelWindow::FrameChange::immediate);
    m_panel.window().orderFrontRegardless();
    synchronizePointerLater();
}

void IslandPanelController::reposition()
{
    if (const auto screen = chooseScreen())
        m_panel.window().setFrame(IslandPanel::frameOn(*screen), PanelWindow::FrameChange::animated);
}

std::optional<Screen> IslandPanelController::chooseScreen() const
{
    const Screens &port = m_container.platform().screens();
    const QList<Screen> screens = port.screens();
    const QString name = m_container.settings().selectedDisplayName();
    if (name != automaticDisplay) {
        const auto named = std::find_if(screens.begin(), screens.end(),
            [&name](const Screen &screen) { return screen.localizedName == name; });
        if (named != screens.end())
            return *named;
    }
    if (const auto screen = m_panel.window().screen())
        return screen;
    if (const auto screen = port.mainScreen())
        return screen;
    return screens.isEmpty() ? std::nullopt : std::optional(screens.first());
}

QRectF IslandPanelController::interactiveRectangle() const
{
    const QRectF frame = m_panel.window().frame();
    if (m_viewModel.isExpanded())
        return frame;
    const SettingsStore &settings = m_container.settings();
    double width = settings.collapsedWidth();
    if (m_container.activities().current())
        width += std::max(settings.collapsedActivityExpansion(), 0.0);
    // Never more than the panel holds: a pointer that is in the closed island must be in the open one too, or
    // the two would call each other up without end.
    width = std::min(width, frame.width());
    const double height = std::min(settings.collapsedHeight(), frame.height());
    return {
        frame.left() + frame.width() / 2 - width / 2, frame.top() + frame.height() - height, width, height};
}

// Runs for each move of the pointer anywhere, so it does no more than this.
void IslandPanelController::synchronizePointer()
{
    const QPointF location = m_container.platform().eventMonitors().mouseLocation();
    const bool isInside = contains(interactiveRectangle(), location);
    if (isInside == m_viewModel.isPointerInside())
        return;
    if (isInside)
        m_viewModel.pointerEntered();
    else
        m_viewModel.pointerExited();
}

void IslandPanelController::synchronizePointerLater()
{
    m_container.platform().scheduler().post(m_lifetime.guard([this] { synchronizePointer(); }));
}

// Acts on the turn after a change, with the value that it had then; announcements without a change are
// dropped.
template <typename Source, typename Signal, typename Read, typename Act>
void IslandPanelController::observe(Source &source, Signal signal, Read read, Act act)
{
    connect(&source, signal, this, [this, read, act, last = read()]() mutable {
        const auto value = read();
        if (value == last)
            return;
        last = value;
        m_container.platform().scheduler().post(m_lifetime.guard([act, value] { act(value); }));
    });
}

void IslandPanelController::setUpObservations()
{
    SettingsStore &settings = m_container.settings();
    const auto place = [this](const auto & /*value*/) { reposition(); };
    observe(
        m_viewModel, &IslandViewModel::isExpandedChanged, [this] { return m_viewModel.isExpanded(); },
        [this](bool isExpanded) { expansionChanged(isExpanded); });
    observe(
        settings, &SettingsStore::selectedDisplayNameChanged,
        [&settings] { return settings.selectedDisplayName(); }, place);
    observe(
        settings, &SettingsStore::collapsedWidthChanged, [&settings] { return settings.collapsedWidth(); },
        place);
    observe(
        settings, &SettingsStore::collapsedHeightChanged, [&settings] { return settings.collapsedHeight(); },
        place);
}

void IslandPanelController::setUpMonitors()
{
    EventMonitors &events = m_container.platform().eventMonitors();
    const EventMask motion = eventMask(EventKind::mouseMoved, EventKind::leftMouseDragged,
        EventKind::rightMouseDragged, EventKind::otherMouseDragged);
    m_outsideClickMonitor =
        events.addGlobalMonitor(eventMask(EventKind::leftMouseDown, EventKind::rightMouseDown),
            m_lifetime.guard([this](const InputEvent & /*event*/) { clickedOutside(); }));
    m_localPointerMonitor = events.addLocalMonitor(motion, [this](const InputEvent & /*event*/) {
        synchronizePointer();
        return EventMonitors::Disposition::pass;
    });
    m_globalPointerMonitor = events.addGlobalMonitor(
        motion, m_lifetime.guard([this](const InputEvent & /*event*/) { synchronizePointerLater(); }));
    m_keyDownMonitor = events.addLocalMonitor(
        eventMask(EventKind::keyDown), [this](const InputEvent &event) { return keyDown(event); });
}

void IslandPanelController::setUpObservers()
{
    Platform &platform = m_container.platform();
    m_screenObserver =
        connect(&platform.screens(), &Screens::parametersChanged, this, &IslandPanelController::reposition);
    m_toggleObserver = platform.notifications().observe(toggleIslandNotification, [this] {
        m_viewModel.toggle();
        m_panel.window().orderFrontRegardless();
    });
}

void IslandPanelController::expansionChanged(bool isExpanded)
{
    // The keys and fields of the open island need the keyboard; afterwards the window system hands it back.
    if (isExpanded)
        m_panel.window().makeKeyAndOrderFront();
    else
        m_panel.window().orderFrontRegardless();
    synchronizePointerLater();
}

void IslandPanelController::clickedOutside()
{
    if (!m_viewModel.isExpanded() || m_viewModel.interactionDepth() > 0)
        return;
    m_container.platform().scheduler().post(m_lifetime.guard([this] { m_viewModel.collapse(true); }));
}

EventMonitors::Disposition IslandPanelController::keyDown(const InputEvent &event)
{
    using enum EventMonitors::Disposition;
    const PanelWindow &window = m_panel.window();
    if (!m_viewModel.isExpanded() || !window.isKeyWindow() || window.isEditingText())
        return pass;
    if ((event.modifierFlags & ModifierFlag::any) != 0)
        return pass;
    if (togglesPlayback(event)) {
        if (!event.isARepeat)
            m_container.media().togglePlayback();
        return swallow;
    }
    const int offset = event.keyCode == KeyCode::upArrow ? -1 : event.keyCode == KeyCode::downArrow ? 1 : 0;
    if (offset == 0)
        return pass;
    m_viewModel.animate(m_viewModel.reducesEffects() ? Motion::plain() : arrowKeyMotion,
        [this, offset] { m_viewModel.selectAdjacentTab(offset); });
    return swallow;
}

bool IslandPanelController::togglesPlayback(const InputEvent &event) const
{
    const bool isSpace = event.keyCode == KeyCode::space || event.charactersIgnoringModifiers == u" ";
    return isSpace && m_viewModel.selectedTab() == IslandTab::media
        && m_container.settings().showMediaPlayer();
}

} // namespace brindle
