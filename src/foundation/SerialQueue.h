#pragma once

#include <functional>

namespace brindle {

/// Runs pieces of work one after another, in the order of posting, away from the poster.
///
/// `post` may be called from any thread, also from a piece of work. What still waits when the queue goes is
/// dropped unrun.
class SerialQueue
{
public:
    virtual ~SerialQueue() = default;

    virtual void post(std::function<void()> work) = 0;
};

} // namespace brindle
