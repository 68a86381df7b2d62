#pragma once

#include "platform/ChildProcesses.h"
#include "platform/linux/process/Spawn.h"

#include <mutex>

namespace brindle {

/// A program that was started. Its state is asked of the kernel, which alone knows; its pipes are read, and
/// its end is dealt with, by the one thread that watches all programs.
class LinuxChild final : public ChildProcess
{
public:
    enum class Source { process, standardOutput, standardError };

    LinuxChild(SpawnedProcess spawned, ChildProcesses::Launch launch);

    bool isRunning() const override;
    void terminate() override;
    void stopReading() override;
    void waitUntilExit() override;

    // For the thread that watches.

    /// Below 0 where there is nothing to watch.
    int descriptor(Source source) const;
    /// Hands on one piece of what has arrived; false when no more can come.
    bool read(Source source);
    /// Closes a pipe of which no more comes.
    void close(Source source);
    /// Hands on what the program wrote before it ended, has it reaped, tells of the end, and lets go of the
    /// handlers.
    void finish();
    /// Tells nobody any more and lets go of the handlers. Takes what is left of it if it has ended.
    void abandon();
    /// Ends it at once, for one that cannot be watched. Waits for that.
    void kill() const;

private:
    using Reader = std::function<void(QByteArray chunk)>;

    FileDescriptor &pipe(Source source);
    /// Reads once, at most `most` bytes. How many there were: 0 at the end, below 0 when none are there.
    qsizetype readOnce(Source source, qsizetype most);
    void drain(Source source);
    void deliver(const Reader &reader, const QByteArray &chunk);

    SpawnedProcess m_spawned;
    ChildProcesses::Launch m_launch;
    /// Held while a reader is called; recursive, so that a reader may remove itself.
    std::recursive_mutex m_readerMutex;
    bool m_isRead = true;
};

} // namespace brindle
