#include "platform/linux/x11/LocalInputEvent.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPointingDevice>
#include <QQuickWindow>
#include <QWheelEvent>

namespace brindle {

namespace {

/// What a notch of an ordinary wheel counts.
constexpr double unitsOfANotch = 120;

quint32 modifierFlags(Qt::KeyboardModifiers modifiers)
{
    quint32 flags = 0;
    if (modifiers & Qt::ShiftModifier)
        flags |= ModifierFlag::shift;
    if (modifiers & Qt::ControlModifier)
        flags |= ModifierFlag::control;
    if (modifiers & Qt::AltModifier)
        flags |= ModifierFlag::option;
    if (modifiers & Qt::MetaModifier)
        flags |= ModifierFlag::command;
    return flags;
}

int keyCode(int key)
{
    switch (key) {
    case Qt::Key_Space:
        return KeyCode::space;
    case Qt::Key_Down:
        return KeyCode::downArrow;
    case Qt::Key_Up:
        return KeyCode::upArrow;
    default:
        return KeyCode::other;
    }
}

InputEvent keyEvent(const QKeyEvent &key)
{
    InputEvent event;
    event.kind = EventKind::keyDown;
    event.keyCode = keyCode(key.key());
    event.modifierFlags = modifierFlags(key.modifiers());
    event.charactersIgnoringModifiers = key.text();
    event.isARepeat = key.isAutoRepeat();
    return event;
}

InputEvent motionEvent(const QMouseEvent &mouse)
{
    InputEvent event;
    if (mouse.buttons() & Qt::LeftButton)
        event.kind = EventKind::leftMouseDragged;
    else if (mouse.buttons() & Qt::RightButton)
        event.kind = EventKind::rightMouseDragged;
    else
        event.kind = mouse.buttons() ? EventKind::otherMouseDragged : EventKind::mouseMoved;
    event.locationInPanel = mouse.position();
    return event;
}

quint32 scrollPhase(Qt::ScrollPhase phase)
{
    switch (phase) {
    case Qt::ScrollBegin:
        return ScrollPhase::began;
    case Qt::ScrollUpdate:
        return ScrollPhase::changed;
    case Qt::ScrollEnd:
        return ScrollPhase::ended;
    default:
        return ScrollPhase::none;
    }
}

// The server tells lengths for wheels too, and hardly ever says what the device is. But a wheel turns by
// whole notches and fingers do not.
bool isSmooth(const QWheelEvent &wheel)
{
    if (wheel.pixelDelta().isNull())
        return false;
    const auto isWhole = [](int units) { return units % int(unitsOfANotch) == 0; };
    return wheel.device()->type() == QInputDevice::DeviceType::TouchPad || !isWhole(wheel.angleDelta().x())
        || !isWhole(wheel.angleDelta().y());
}

InputEvent wheelEvent(const QWheelEvent &wheel)
{
    InputEvent event;
    event.kind = EventKind::scrollWheel;
    event.locationInPanel = wheel.position();
    if (wheel.phase() == Qt::ScrollMomentum)
        event.momentumPhase = ScrollPhase::changed;
    else
        event.phase = scrollPhase(wheel.phase());
    event.hasPreciseScrollingDeltas = isSmooth(wheel);
    const QPointF delta = event.hasPreciseScrollingDeltas ? QPointF(wheel.pixelDelta())
                                                          : QPointF(wheel.angleDelta()) / unitsOfANotch;
    event.scrollingDeltaX = delta.x();
    event.scrollingDeltaY = delta.y();
    return event;
}

} // namespace

std::optional<InputEvent> localInputEvent(const QWindow &window, const QEvent &event)
{
    std::optional<InputEvent> input;
    switch (event.type()) {
    case QEvent::KeyPress:
        input = keyEvent(static_cast<const QKeyEvent &>(event));
        break;
    case QEvent::MouseMove:
        input = motionEvent(static_cast<const QMouseEvent &>(event));
        break;
    case QEvent::Wheel:
        input = wheelEvent(static_cast<const QWheelEvent &>(event));
        break;
    default:
        return std::nullopt;
    }
    // The panel is the program's one window that no window manager handles.
    input->isInPanel = qobject_cast<const QQuickWindow *>(&window)
        && window.flags().testFlag(Qt::X11BypassWindowManagerHint);
    return input;
}

} // namespace brindle
