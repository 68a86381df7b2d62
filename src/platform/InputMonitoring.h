#pragma once

namespace brindle {

/// The permission to see the keys that go to other programs. Main thread.
class InputMonitoring
{
public:
    virtual ~InputMonitoring() = default;

    /// Whether it is granted now. Shows nothing; fast enough for once a second.
    virtual bool preflightListenEventAccess() const = 0;
    /// Has the desktop ask the person, in its own words and time, where it can. The answer shows in the
    /// preflight.
    virtual void requestListenEventAccess() = 0;
};

} // namespace brindle
