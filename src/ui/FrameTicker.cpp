#include "ui/FrameTicker.h"

#include <utility>

namespace brindle {

FrameTicker::FrameTicker(std::function<void(double)> tick, QObject *parent)
    : QAbstractAnimation(parent)
    , m_tick(std::move(tick))
{ }

void FrameTicker::run()
{
    if (state() == Running)
        return;
    m_last = 0;
    start();
    // The frame that follows shows the first step already, and not once more what was there.
    m_tick(firstStep);
}

void FrameTicker::rest()
{
    if (state() != Stopped)
        stop();
}

void FrameTicker::updateCurrentTime(int milliseconds)
{
    const int passed = milliseconds - std::exchange(m_last, milliseconds);
    if (state() == Running && passed > 0)
        m_tick(passed / 1000.0);
}

} // namespace brindle
