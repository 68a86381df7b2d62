#include "platform/linux/x11/X11Stacking.h"

#include "platform/linux/x11/XcbConnection.h"

#include <QGuiApplication>
#include <QRect>
#include <QScreen>
#include <QWindow>

#include <algorithm>
#include <span>

namespace brindle {

namespace {

/// Seconds between a change of the stack and the look at it: a new window settles in several steps.
constexpr double settleTime = 0.05;
/// Raises in close succession after which the window lets the other one have its way for a while.
constexpr int raisesInARow = 5;
constexpr double fightPause = 5;

/// The events about top-level windows that come with the root window's mask.
constexpr uint32_t topLevelEvents = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;

QRect geometryOf(xcb_window_t window)
{
    const XcbReply<xcb_get_geometry_reply_t> reply(
        xcb_get_geometry_reply(Xcb::connection(), xcb_get_geometry(Xcb::connection(), window), nullptr));
    return reply ? QRect(reply->x, reply->y, reply->width, reply->height) : QRect();
}

bool isOwn(xcb_window_t window)
{
    const auto windows = QGuiApplication::allWindows();
    return std::ranges::any_of(windows,
        [window](const QWindow *own) { return own->handle() && xcb_window_t(own->winId()) == window; });
}

/// Adds to what Qt asks of the root window, which is one mask for the whole connection.
void listenToTopLevels()
{
    const XcbReply<xcb_get_window_attributes_reply_t> attributes(xcb_get_window_attributes_reply(
        Xcb::connection(), xcb_get_window_attributes(Xcb::connection(), Xcb::root()), nullptr));
    if (!attributes)
        return;
    const uint32_t mask = attributes->your_event_mask | topLevelEvents;
    xcb_change_window_attributes(Xcb::connection(), Xcb::root(), XCB_CW_EVENT_MASK, &mask);
    xcb_flush(Xcb::connection());
}

} // namespace

X11Stacking::X11Stacking(QWindow &window, Scheduler &scheduler) : m_window(window), m_scheduler(scheduler)
{
    listenToTopLevels();
    // Qt asks anew, for what it wants only, whenever it learns of another display.
    m_screens =
        QObject::connect(qGuiApp, &QGuiApplication::screenAdded, [](QScreen *) { listenToTopLevels(); });
    qGuiApp->installNativeEventFilter(this);
}

X11Stacking::~X11Stacking()
{
    QObject::disconnect(m_screens);
}

bool X11Stacking::nativeEventFilter(const QByteArray &, void *message, qintptr *)
{
    constexpr uint8_t typeMask = 0x7f;
    const auto *event = static_cast<xcb_generic_event_t *>(message);
    switch (event->response_type & typeMask) {
    case XCB_MAP_NOTIFY:
    case XCB_CIRCULATE_NOTIFY:
        lookSoon();
        break;
    case XCB_CONFIGURE_NOTIFY:
        // Moves of one's own window come here too.
        if (static_cast<xcb_configure_notify_event_t *>(message)->window != m_window.winId())
            lookSoon();
        break;
    default:
        break;
    }
    return false;
}

void X11Stacking::lookSoon()
{
    if (!m_look.isPending())
        m_look = m_scheduler.after(settleTime, [this] { raiseIfCovered(); });
}

void X11Stacking::raiseIfCovered()
{
    if (!m_window.isVisible() || !isCovered())
        return;
    const double now = m_scheduler.uptime();
    if (now - m_lastRaise >= fightPause)
        m_raises = 0;
    else if (m_raises >= raisesInARow)
        return;
    ++m_raises;
    m_lastRaise = now;
    m_window.raise();
    // Nothing else may happen for a long time, and Qt would keep the request until then.
    xcb_flush(Xcb::connection());
}

bool X11Stacking::isCovered() const
{
    const XcbReply<xcb_query_tree_reply_t> tree(
        xcb_query_tree_reply(Xcb::connection(), xcb_query_tree(Xcb::connection(), Xcb::root()), nullptr));
    if (!tree)
        return false;
    // From the bottom of the stack to its top.
    const std::span stack(
        xcb_query_tree_children(tree.get()), size_t(xcb_query_tree_children_length(tree.get())));
    const auto own = std::ranges::find(stack, xcb_window_t(m_window.winId()));
    if (own == stack.end())
        return false;
    const QRect area = geometryOf(*own);
    return std::any_of(own + 1, stack.end(), [&area](xcb_window_t above) {
        return !isOwn(above) && Xcb::isViewable(above) && geometryOf(above).intersects(area);
    });
}

} // namespace brindle
