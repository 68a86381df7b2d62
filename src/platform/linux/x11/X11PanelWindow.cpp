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
    connect(&m_compositor, &X11Selection::isOwnedChanged, this, &X11PanelWindow::followCompositor);
    connect(m_window.get(), &QWindow::screenChanged, this, [this] { m_shape.apply(); });
    followCompositor();
}

X11PanelWindow::~X11PanelWindow()
{
    giveKeyboardBack();
}

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

// The window's own idea of its display comes late, with the server's answer to a move.
std::optional<Screen> X11PanelWindow::screen() const
{
    if (!m_isPlaced)
        return std::nullopt;
    const QScreen *best = nullptr;
    int most = 0;
    for (const QScreen *screen : QGuiApplication::screens()) {
        const QRect overlap = screen->geometry() & m_window->geometry();
        if (overlap.width() * overlap.height() > most) {
            most = overlap.width() * overlap.height();
            best = screen;
        }
    }
    return best ? std::optional(QtScreens::describe(*best)) : std::nullopt;
}

void X11PanelWindow::orderFrontRegardless()
{
    giveKeyboardBack();
    if (!m_window->isVisible()) {
        create();
        m_window->show();
    }
    m_window->raise();
    xcb_flush(Xcb::connection());
}

void X11PanelWindow::create()
{
    m_window->create();
    // No window manager looks at the kind, but compositors do: they neither shade, dim nor round a dock.
    const xcb_atom_t kind = Xcb::atom("_NET_WM_WINDOW_TYPE_DOCK");
    xcb_change_property(Xcb::connection(), XCB_PROP_MODE_REPLACE, xcb_window_t(m_window->winId()),
        Xcb::atom("_NET_WM_WINDOW_TYPE"), XCB_ATOM_ATOM, 32, 1, &kind);
    m_shape.apply();
}

void X11PanelWindow::makeKeyAndOrderFront()
{
    if (!m_window->isVisible())
        orderFrontRegardless();
    m_window->raise();
    if (m_style.canBecomeKey)
        takeKeyboard();
    xcb_flush(Xcb::connection());
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
    m_shape.setCutsDrawing(!m_compositor.isOwned());
    m_window->update();
}

// Asks the server: Qt hears of a change of the focus later.
bool X11PanelWindow::hasKeyboard() const
{
    return m_window->handle() && Xcb::focusedWindow() == m_window->winId();
}

// A window without a manager is given the keyboard by nobody, so it takes it.
void X11PanelWindow::takeKeyboard()
{
    if (!hasKeyboard()) {
        m_focusBefore = Xcb::focusedWindow();
        Xcb::focus(xcb_window_t(m_window->winId()));
    }
    m_window->contentItem()->forceActiveFocus(Qt::ActiveWindowFocusReason);
}

// Only what the panel still has is its to give: whoever took the keyboard meanwhile keeps it. Where there is
// nobody to give it to, the window manager finds somebody.
void X11PanelWindow::giveKeyboardBack()
{
    const xcb_window_t before = std::exchange(m_focusBefore, xcb_window_t(XCB_INPUT_FOCUS_NONE));
    if (!hasKeyboard())
        return;
    for (const xcb_window_t heir : {before, Xcb::activeWindow()}) {
        if (Xcb::isViewable(heir)) {
            Xcb::focus(heir);
            return;
        }
    }
    Xcb::focus(XCB_INPUT_FOCUS_POINTER_ROOT);
}

} // namespace brindle
