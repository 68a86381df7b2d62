#include "platform/linux/x11/X11PanelWindow.h"

#include "platform/linux/QtScreens.h"
#include "platform/linux/ScreenCoordinates.h"
#include "platform/linux/x11/XcbConnection.h"

#include <QGuiApplication>
#include <QQuickItem>
#include <QQuickWindow>
#include <QScreen>
#include <QSurfaceFormat>

namespace brindle {

namespace {

std::unique_ptr<QQuickWindow> makeWindow(const PanelStyle &style)
{
    auto window = std::make_unique<QQuickWindow>();
    QSurfaceFormat format = window->format();
    format.setAlphaBufferSize(style.opaque ? -1 : 8);
    window->setFormat(format);
    window->setColor(Qt::transparent);
    window->setFlags(Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint | Qt::X11BypassWindowManagerHint
        | Qt::NoDropShadowWindowHint);
    window->setTitle(QStringLiteral("Velmora"));
    window->resize(style.placeholderSize.toSize());
    return window;
}

} // namespace

X11PanelWindow::X11PanelWindow(const PanelStyle &style, Scheduler &scheduler)
    : m_style(style)
    , m_window(makeWindow(style))
    , m_shape(*m_window)
    , m_stacking(*m_window, scheduler)
{
    connect(&m_compositor, &X11Compositor::isRunningChanged, this, &X11PanelWindow::followCompositor);
    followCompositor();
}

X11PanelWindow::~X11PanelWindow() = default;

QRectF X11PanelWindow::frame() const
{
    return ScreenCoordinates::fromWindowSystem(QRectF(m_window->geometry()));
}

// The X server has no animated moves, and a panel that slides across a display would only be in the way.
void X11PanelWindow::setFrame(const QRectF &frame, FrameChange)
{
    m_window->setGeometry(ScreenCoordinates::toWindowSystem(frame).toAlignedRect());
    m_isPlaced = true;
}

std::optional<Screen> X11PanelWindow::screen() const
{
    if (!m_isPlaced || !m_window->screen() || m_window->screen()->geometry().isEmpty())
        return std::nullopt;
    return QtScreens::describe(*m_window->screen());
}

void X11PanelWindow::orderFrontRegardless()
{
    giveKeyboardBack();
    if (!m_window->isVisible()) {
        m_window->create();
        m_shape.apply();
        m_window->show();
    }
    m_window->raise();
    xcb_flush(Xcb::connection());
}

void X11PanelWindow::makeKeyAndOrderFront()
{
    if (!m_window->isVisible())
        orderFrontRegardless();
    m_window->raise();
    if (!m_style.canBecomeKey || isKeyWindow())
        return;
    m_focusBefore = Xcb::focusedWindow();
    // The server ignores a request that is older than the last change of focus, and Qt would date this one by the last event
    // that it saw itself.
    xcb_set_input_focus(
        Xcb::connection(), XCB_INPUT_FOCUS_POINTER_ROOT, xcb_window_t(m_window->winId()), XCB_CURRENT_TIME);
    xcb_flush(Xcb::connection());
    m_window->contentItem()->forceActiveFocus(Qt::ActiveWindowFocusReason);
}

bool X11PanelWindow::isKeyWindow() const
{
    return m_window->isActive();
}

bool X11PanelWindow::isEditingText() const
{
    const QQuickItem *item = m_window->activeFocusItem();
    return item && item->flags().testFlag(QQuickItem::ItemAcceptsInputMethod);
}

void X11PanelWindow::setInputShape(const QPainterPath &shape)
{
    m_shape.set(shape);
}

QQuickWindow *X11PanelWindow::contentWindow()
{
    return m_window.get();
}

// Without a compositor what should be transparent is black, so that the window may be no larger than what it
// shows.
void X11PanelWindow::followCompositor()
{
    m_shape.setCutsDrawing(!m_compositor.isRunning());
    m_window->update();
}

// Only what the panel still has is its to give: whoever took the keyboard meanwhile keeps it.
void X11PanelWindow::giveKeyboardBack()
{
    const xcb_window_t before = std::exchange(m_focusBefore, xcb_window_t(XCB_INPUT_FOCUS_NONE));
    if (before == XCB_INPUT_FOCUS_NONE || Xcb::focusedWindow() != m_window->winId())
        return;
    const xcb_window_t heir = Xcb::isViewable(before) ? before : xcb_window_t(XCB_INPUT_FOCUS_POINTER_ROOT);
    xcb_set_input_focus(Xcb::connection(), XCB_INPUT_FOCUS_POINTER_ROOT, heir, XCB_CURRENT_TIME);
    xcb_flush(Xcb::connection());
}

} // namespace brindle
