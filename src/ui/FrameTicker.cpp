#include "ui/FrameTicker.h"

#include <algorithm>
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
    m_isFirst = true;
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
    double passed = (milliseconds - std::exchange(m_last, milliseconds)) / 1000.0;
    if (state() != Running || passed <= 0)
        return;
    // What is built when something begins to move takes its time; the movement must not jump over it.
    if (std::exchange(m_isFirst, false))
        passed = std::min(passed, firstStep);
    m_tick(passed);
}

} // namespace brindle
