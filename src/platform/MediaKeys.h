#pragma once

#include "foundation/Subscription.h"

#include <functional>

namespace brindle {

/// The codes of the keys that the program looks at.
namespace MediaKeyCode {
inline constexpr long soundUp = 0;
inline constexpr long soundDown = 1;
inline constexpr long brightnessUp = 2;
inline constexpr long brightnessDown = 3;
inline constexpr long mute = 7;
} // namespace MediaKeyCode

enum class MediaKeyState : long { down = 10, up = 11 };

/// An event as its `data1`: the key code from bit 16 up, the state in bits 8 to 15. The lowest bits may hold
/// more, which nobody here reads.
constexpr long mediaKeyData(long keyCode, MediaKeyState state)
{
    return (keyCode << 16) | (static_cast<long>(state) << 8);
}
constexpr long mediaKeyCode(long data1)
{
    return data1 >> 16;
}
constexpr bool isMediaKeyDown(long data1)
{
    return ((data1 >> 8) & 0xff) == static_cast<long>(MediaKeyState::down);
}

/// Watches the keys for volume and brightness, whatever program has the keyboard, and takes them from nobody.
///
/// A held key may come down again and again. Other keys may be told too, with codes of their own; but what a
/// person types is neither told nor kept.
class MediaKeys
{
public:
    virtual ~MediaKeys() = default;

    /// Calls `handler` with the `data1` of each event for as long as the monitor lasts, on any thread; it
    /// must return soon. Empty when the system does not grant it. Nothing is watched without a monitor.
    [[nodiscard]] virtual Subscription addGlobalMonitor(std::function<void(long data1)> handler) = 0;
};

} // namespace brindle
