#pragma once

#include "foundation/Subscription.h"

#include <QPointF>
#include <QString>

#include <functional>

namespace brindle {

/// The kinds of input events that can be watched. The values are bits of a mask.
enum class EventKind : quint32 {
    leftMouseDown = 1U << 1,
    rightMouseDown = 1U << 3,
    mouseMoved = 1U << 5,
    leftMouseDragged = 1U << 6,
    rightMouseDragged = 1U << 7,
    keyDown = 1U << 10,
    scrollWheel = 1U << 22,
    otherMouseDragged = 1U << 27,
};

using EventMask = quint32;

template <typename... Kinds> constexpr EventMask eventMask(Kinds... kinds)
{
    return (EventMask(0) | ... | static_cast<EventMask>(kinds));
}

/// Modifier keys as bits of `InputEvent::modifierFlags`.
namespace ModifierFlag {
inline constexpr quint32 shift = 1U << 17;
inline constexpr quint32 control = 1U << 18;
inline constexpr quint32 option = 1U << 19;
inline constexpr quint32 command = 1U << 20;
inline constexpr quint32 any = shift | control | option | command;
} // namespace ModifierFlag

/// The key codes that the program looks at. Each platform maps its own codes to these, and all else to
/// `other`.
namespace KeyCode {
inline constexpr int other = -1;
inline constexpr int space = 49;
inline constexpr int downArrow = 125;
inline constexpr int upArrow = 126;
} // namespace KeyCode

/// Phases of a scroll gesture, as bits.
namespace ScrollPhase {
inline constexpr quint32 none = 0;
inline constexpr quint32 began = 1;
inline constexpr quint32 changed = 4;
inline constexpr quint32 ended = 8;
inline constexpr quint32 cancelled = 16;
} // namespace ScrollPhase

struct InputEvent
{
    EventKind kind = EventKind::mouseMoved;

    /// Of keys.
    int keyCode = KeyCode::other;
    quint32 modifierFlags = 0;
    QString charactersIgnoringModifiers;
    bool isARepeat = false;

    /// Of local events: where in the panel, in points from its top left corner, y downwards; and whether the
    /// event belongs to the panel at all (it may belong to another window of the program).
    QPointF locationInPanel;
    bool isInPanel = false;

    /// Of scrolls. A positive vertical delta moves the content down. Points for precise deltas, notches
    /// otherwise.
    quint32 phase = ScrollPhase::none;
    quint32 momentumPhase = ScrollPhase::none;
    double scrollingDeltaX = 0;
    double scrollingDeltaY = 0;
    bool hasPreciseScrollingDeltas = false;
};

/// Watches the pointer and the keys, in this program and in all others.
///
/// A monitor lasts as long as its subscription; one that the system does not grant comes back empty. Handlers
/// run on the main thread. Global monitors see only events that go to other programs and cannot change them;
/// motion is coalesced, and nothing is watched while there is no monitor for it.
class EventMonitors
{
public:
    enum class Disposition { pass, swallow };

    virtual ~EventMonitors() = default;

    /// Where the pointer is, in the coordinates of `Screens`.
    virtual QPointF mouseLocation() const = 0;
    /// Bit 0 is the primary button, bit 1 the secondary, bit 2 the middle one. Asks the system: the answer
    /// holds during drags of other programs too.
    virtual quint32 pressedMouseButtons() const = 0;

    [[nodiscard]] virtual Subscription addGlobalMonitor(
        EventMask mask, std::function<void(const InputEvent &)> handler) = 0;
    [[nodiscard]] virtual Subscription addLocalMonitor(
        EventMask mask, std::function<Disposition(const InputEvent &)> handler) = 0;
};

} // namespace brindle
