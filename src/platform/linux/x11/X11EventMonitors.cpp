#include "platform/linux/x11/X11EventMonitors.h"

#include "platform/linux/ScreenCoordinates.h"
#include "platform/linux/x11/LocalInputEvent.h"
#include "platform/linux/x11/XcbConnection.h"

#include <QCursor>
#include <QGuiApplication>
#include <QWindow>

#include <xcb/xinput.h>

namespace brindle {

namespace {

/// Seconds within which motion is one event: about as long as a display shows a frame at twice its rate.
constexpr double motionInterval = 0.008;

constexpr EventMask motionMask = eventMask(EventKind::mouseMoved, EventKind::leftMouseDragged,
    EventKind::rightMouseDragged, EventKind::otherMouseDragged);
constexpr EventMask pressMask = eventMask(EventKind::leftMouseDown, EventKind::rightMouseDown);

bool hasInputExtension()
{
    const auto *extension = xcb_get_extension_data(Xcb::connection(), &xcb_input_id);
    if (!extension || !extension->present)
        return false;
    const XcbReply<xcb_input_xi_query_version_reply_t> version(xcb_input_xi_query_version_reply(
        Xcb::connection(), xcb_input_xi_query_version(Xcb::connection(), 2, 2), nullptr));
    return bool(version);
}

void selectRawEvents(uint32_t events)
{
    struct
    {
        xcb_input_event_mask_t header{XCB_INPUT_DEVICE_ALL_MASTER, 1};
        uint32_t mask = 0;
    } selection;
    selection.mask = events;
    xcb_input_xi_select_events(Xcb::connection(), Xcb::root(), 1, &selection.header);
    xcb_flush(Xcb::connection());
}

EventKind motionKind(quint32 buttons)
{
    if (buttons & 1U)
        return EventKind::leftMouseDragged;
    if (buttons & 2U)
        return EventKind::rightMouseDragged;
    return buttons ? EventKind::otherMouseDragged : EventKind::mouseMoved;
}

} // namespace

X11EventMonitors::X11EventMonitors(Scheduler &scheduler, QObject *parent)
    : QObject(parent)
    , m_scheduler(scheduler)
    , m_scroll(scheduler, [this](const InputEvent &end) { send(m_local, end); })
{
    if (hasInputExtension()) {
        m_inputOpcode = xcb_get_extension_data(Xcb::connection(), &xcb_input_id)->major_opcode;
        qGuiApp->installNativeEventFilter(this);
    }
}

X11EventMonitors::~X11EventMonitors() = default;

QPointF X11EventMonitors::mouseLocation() const
{
    return ScreenCoordinates::fromWindowSystem(QPointF(QCursor::pos()));
}

quint32 X11EventMonitors::pressedMouseButtons() const
{
    const XcbReply<xcb_query_pointer_reply_t> reply(xcb_query_pointer_reply(
        Xcb::connection(), xcb_query_pointer(Xcb::connection(), Xcb::root()), nullptr));
    if (!reply)
        return 0;
    quint32 buttons = 0;
    if (reply->mask & XCB_BUTTON_MASK_1)
        buttons |= 1U;
    if (reply->mask & XCB_BUTTON_MASK_3)
        buttons |= 2U;
    if (reply->mask & XCB_BUTTON_MASK_2)
        buttons |= 4U;
    return buttons;
}

Subscription X11EventMonitors::addGlobalMonitor(
    EventMask mask, std::function<void(const InputEvent &)> handler)
{
    if (!m_inputOpcode)
        return {};
    return add(&X11EventMonitors::m_global, {mask, [handler = std::move(handler)](const InputEvent &event) {
                                                 handler(event);
                                                 return Disposition::pass;
                                             }});
}

Subscription X11EventMonitors::addLocalMonitor(
    EventMask mask, std::function<Disposition(const InputEvent &)> handler)
{
    return add(&X11EventMonitors::m_local, {mask, std::move(handler)});
}

Subscription X11EventMonitors::add(Monitors X11EventMonitors::*monitors, Monitor monitor)
{
    const quint64 number = ++m_lastNumber;
    (this->*monitors).emplace(number, std::move(monitor));
    monitorsChanged();
    return Subscription{m_lifetime.guard([this, monitors, number] {
        (this->*monitors).erase(number);
        monitorsChanged();
    })};
}

EventMask X11EventMonitors::maskOf(const Monitors &monitors)
{
    EventMask mask = 0;
    for (const auto &[number, monitor] : monitors)
        mask |= monitor.mask;
    return mask;
}

// What nobody watches is not asked for, so that a moving pointer wakes the program only where it matters.
void X11EventMonitors::monitorsChanged()
{
    if (m_inputOpcode) {
        const EventMask mask = maskOf(m_global);
        selectRawEvents(((mask & motionMask) ? XCB_INPUT_XI_EVENT_MASK_RAW_MOTION : 0)
            | ((mask & pressMask) ? XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_PRESS : 0));
    }
    const bool wanted = !m_local.empty();
    if (wanted != m_filtersLocalEvents) {
        m_filtersLocalEvents = wanted;
        if (wanted)
            qGuiApp->installEventFilter(this);
        else
            qGuiApp->removeEventFilter(this);
    }
}

// True when a monitor swallowed the event.
bool X11EventMonitors::send(const Monitors &monitors, const InputEvent &event)
{
    // A copy: handlers may add and end monitors.
    for (const auto &[number, monitor] : Monitors(monitors)) {
        if ((monitor.mask & eventMask(event.kind)) && monitor.handler(event) == Disposition::swallow)
            return true;
    }
    return false;
}

bool X11EventMonitors::nativeEventFilter(const QByteArray &, void *message, qintptr *)
{
    const auto *event = static_cast<xcb_generic_event_t *>(message);
    constexpr uint8_t typeMask = 0x7f;
    if ((event->response_type & typeMask) != XCB_GE_GENERIC)
        return false;
    const auto *generic = static_cast<xcb_ge_generic_event_t *>(message);
    if (generic->extension != m_inputOpcode)
        return false;
    if (generic->event_type == XCB_INPUT_RAW_MOTION)
        rawMotion();
    else if (generic->event_type == XCB_INPUT_RAW_BUTTON_PRESS)
        rawPress(int(static_cast<xcb_input_raw_button_press_event_t *>(message)->detail));
    return false;
}

void X11EventMonitors::rawMotion()
{
    if (m_motion.isPending())
        return;
    m_motion = m_scheduler.after(motionInterval, [this] {
        InputEvent event;
        event.kind = motionKind(pressedMouseButtons());
        send(m_global, event);
    });
}

void X11EventMonitors::rawPress(int button)
{
    constexpr int primary = 1;
    constexpr int secondary = 3;
    if (button != primary && button != secondary)
        return;
    // A press in one of the program's own windows is a local matter.
    if (QGuiApplication::topLevelAt(QCursor::pos()) != nullptr)
        return;
    InputEvent event;
    event.kind = button == primary ? EventKind::leftMouseDown : EventKind::rightMouseDown;
    send(m_global, event);
}

bool X11EventMonitors::eventFilter(QObject *watched, QEvent *event)
{
    // Only what arrives at a window: items get the same events again.
    if (!watched->isWindowType())
        return false;
    std::optional<InputEvent> input = localInputEvent(*static_cast<QWindow *>(watched), *event);
    if (!input)
        return false;
    m_scroll.mark(*input);
    return send(m_local, *input);
}

} // namespace brindle
