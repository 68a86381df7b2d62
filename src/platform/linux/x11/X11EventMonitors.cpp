#include "platform/linux/x11/X11EventMonitors.h"

#include "platform/linux/ScreenCoordinates.h"
#include "platform/linux/x11/LocalInputEvent.h"
#include "platform/linux/x11/XcbConnection.h"

#include <QCursor>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QWindow>

#include <algorithm>
#include <xcb/xinput.h>

namespace brindle {

namespace {

/// Seconds between two events of one motion: about as long as a display shows a frame at twice its rate.
constexpr double motionInterval = 0.008;

constexpr EventMask motionMask = eventMask(EventKind::mouseMoved, EventKind::leftMouseDragged,
    EventKind::rightMouseDragged, EventKind::otherMouseDragged);
constexpr EventMask pressMask = eventMask(EventKind::leftMouseDown, EventKind::rightMouseDown);

constexpr uint32_t primaryButton = 1;
constexpr uint32_t secondaryButton = 3;

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

xcb_window_t makeMailbox()
{
    const xcb_window_t mailbox = xcb_generate_id(Xcb::connection());
    xcb_create_window(Xcb::connection(), XCB_COPY_FROM_PARENT, mailbox, Xcb::root(), -1, -1, 1, 1, 0,
        XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
    return mailbox;
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
        m_mailbox = makeMailbox();
        qGuiApp->installNativeEventFilter(this);
    }
}

X11EventMonitors::~X11EventMonitors()
{
    if (m_mailbox == XCB_WINDOW_NONE || !Xcb::connection())
        return;
    selectRawEvents(XCB_NONE);
    xcb_destroy_window(Xcb::connection(), m_mailbox);
    xcb_flush(Xcb::connection());
}

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
    if ((event->response_type & typeMask) == XCB_CLIENT_MESSAGE) {
        const auto *letter = static_cast<xcb_client_message_event_t *>(message);
        if (letter->window != m_mailbox)
            return false;
        pressIsDecided(letter->data.data32[0]);
        return true;
    }
    const auto *generic = static_cast<xcb_ge_generic_event_t *>(message);
    if ((event->response_type & typeMask) != XCB_GE_GENERIC || generic->extension != m_inputOpcode)
        return false;
    if (generic->event_type == XCB_INPUT_RAW_MOTION) {
        rawMotion();
    } else if (generic->event_type == XCB_INPUT_RAW_BUTTON_PRESS) {
        const auto *press = static_cast<xcb_input_raw_button_press_event_t *>(message);
        rawPress(press->time, press->detail);
    } else if (generic->event_type == XCB_INPUT_BUTTON_PRESS) {
        const auto *press = static_cast<xcb_input_button_press_event_t *>(message);
        ownPress(press->time);
    }
    return false;
}

// A pointer that sets out is told of at once; while it goes on, once in each interval.
void X11EventMonitors::rawMotion()
{
    m_hasMovedOn = m_motion.isPending();
    if (m_hasMovedOn)
        return;
    m_motion = m_scheduler.after(motionInterval, [this] {
        if (m_hasMovedOn)
            rawMotion();
    });
    InputEvent event;
    event.kind = motionKind(pressedMouseButtons());
    send(m_global, event);
}

// Where the pointer is by now says little: it may have left the window that was pressed. If the press comes
// to this program, the server has sent it before it gets to a letter that is written now.
void X11EventMonitors::rawPress(xcb_timestamp_t time, uint32_t button)
{
    if (button != primaryButton && button != secondaryButton)
        return;
    m_undecided.push_back({time, button});
    xcb_client_message_event_t letter{};
    letter.response_type = XCB_CLIENT_MESSAGE;
    letter.format = 32;
    letter.window = m_mailbox;
    letter.data.data32[0] = time;
    xcb_send_event(
        Xcb::connection(), 0, m_mailbox, XCB_EVENT_MASK_NO_EVENT, reinterpret_cast<const char *>(&letter));
    xcb_flush(Xcb::connection());
}

// By its time only: a person may have exchanged the buttons, which raw input does not know.
void X11EventMonitors::ownPress(xcb_timestamp_t time)
{
    std::erase_if(m_undecided, [time](const Press &press) { return press.time == time; });
}

void X11EventMonitors::pressIsDecided(xcb_timestamp_t time)
{
    const auto press = std::ranges::find(m_undecided, time, &Press::time);
    if (press == m_undecided.end())
        return;
    InputEvent event;
    event.kind = press->button == primaryButton ? EventKind::leftMouseDown : EventKind::rightMouseDown;
    m_undecided.erase(press);
    send(m_global, event);
}

bool X11EventMonitors::eventFilter(QObject *watched, QEvent *event)
{
    // Only what arrives at a window: items get the same events again.
    if (!watched->isWindowType())
        return false;
    if (event->type() == QEvent::KeyRelease) {
        const auto *release = static_cast<QKeyEvent *>(event);
        m_lastRelease = {release->nativeScanCode(), release->timestamp()};
        return false;
    }
    std::optional<InputEvent> input = localInputEvent(*static_cast<QWindow *>(watched), *event);
    if (!input)
        return false;
    if (event->type() == QEvent::KeyPress)
        input->isARepeat = isRepeat(*static_cast<QKeyEvent *>(event));
    m_scroll.mark(*input);
    return send(m_local, *input);
}

// A held key goes up and down again in the same millisecond. Qt looks for that too, but misses it where the
// two do not arrive together, and goes on believing in it where the real release went to another program.
bool X11EventMonitors::isRepeat(const QKeyEvent &press) const
{
    return press.nativeScanCode() == m_lastRelease.key && press.timestamp() == m_lastRelease.time;
}

} // namespace brindle
