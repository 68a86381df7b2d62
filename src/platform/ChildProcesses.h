#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <functional>
#include <memory>

namespace brindle {

/// A program that this one started. Any thread.
///
/// Dropping the handle neither ends the program nor waits for it; what is left of it when it ends is cleared
/// away all the same.
class ChildProcess
{
public:
    virtual ~ChildProcess() = default;

    virtual bool isRunning() const = 0;
    /// Asks it to end, and returns at once. Its end comes as any other.
    virtual void terminate() = 0;
    /// Removes both readers: once this has returned, neither is called again. What the program writes from
    /// then on finds nobody.
    virtual void stopReading() = 0;
    /// Blocks until it has ended; at once if it has.
    virtual void waitUntilExit() = 0;
};

/// Starts programs. Any thread.
class ChildProcesses
{
public:
    struct Launch
    {
        /// An absolute path.
        QString executable;
        QStringList arguments;
        /// Given what the program wrote, as it arrives, in order, on a thread of the system's: to be handed
        /// on at once. Empty: what it writes is thrown away.
        std::function<void(QByteArray chunk)> standardOutput;
        std::function<void(QByteArray chunk)> standardError;
        /// Called once, on a thread of the system's, after the last chunk, also when its ending was asked
        /// for. Other programs that inherited the output do not hold it up.
        std::function<void()> terminated;
    };

    virtual ~ChildProcesses() = default;

    /// Null when it cannot be started; then nothing is called. A handler may be called before this returns.
    virtual std::shared_ptr<ChildProcess> launch(Launch launch) = 0;
};

} // namespace brindle
