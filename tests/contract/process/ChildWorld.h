#pragma once

#include "platform/ChildProcesses.h"

namespace brindle::test {

/// A machine on which a program runs that does what a test says.
class ChildWorld
{
public:
    using Launch = ChildProcesses::Launch;

    virtual ~ChildWorld() = default;

    virtual ChildProcesses &port() = 0;
    /// Names the obedient program; the handlers are the test's.
    virtual Launch obedientProgram() = 0;
    /// From now on nothing can be started.
    virtual void refuse(Launch &launch) = 0;

    // What the program that was started last does.

    virtual void write(const QByteArray &text) = 0;
    virtual void writeError(const QByteArray &text) = 0;
    virtual void exit() = 0;
    /// Ends if it was asked to.
    virtual void obeyTermination() = 0;
};

} // namespace brindle::test
