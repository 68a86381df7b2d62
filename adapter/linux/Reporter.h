#pragma once

#include "adapter/linux/LineComposer.h"
#include "foundation/Scheduler.h"

#include <functional>

namespace brindle::adapter {

class LineOutput;

/// Turns changes into lines, at a bearable rate.
///
/// The first change opens a window; at its end one line tells what all changes in it came to. So no change
/// waits longer than the window, and changes that take each other back are not told. While the output is busy
/// nothing queues up: what is told when it is free again is what holds then.
class Reporter
{
public:
    /// `window` in seconds; `present` gives what is to be told at the moment of the call.
    Reporter(Scheduler &scheduler, double window, LineOutput &output, std::function<Payload()> present);

    /// Tells all of what holds, at the latest after so many seconds, and as soon as `beComplete` is called.
    void begin(double atMost);
    /// What is to be told first is complete. Later calls do nothing.
    void beComplete();
    /// Something may have changed.
    void change();
    /// The output that refused a line would take one now.
    void outputIsFree();

    /// What the reader knows, or will when it has read all; absent before the first line.
    const std::optional<Payload> &lastTold() const { return m_composer.lastTold(); }

private:
    void report();

    Scheduler &m_scheduler;
    const double m_length;
    LineOutput &m_output;
    const std::function<Payload()> m_present;
    LineComposer m_composer;
    bool m_isBeginning = false;
    bool m_owes = false;
    Delay m_window;
};

} // namespace brindle::adapter
