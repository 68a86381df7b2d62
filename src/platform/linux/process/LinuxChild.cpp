#include "platform/linux/process/LinuxChild.h"

#include "platform/linux/process/PidFd.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/wait.h>

namespace brindle {

namespace {

/// As much as a pipe holds.
constexpr qsizetype chunkSize = 65'536;

/// Whether the program has ended within `milliseconds`; below 0 waits for it.
bool hasEnded(const FileDescriptor &process, int milliseconds)
{
    pollfd query{process.number(), POLLIN, 0};
    int answer = 0;
    do {
        answer = poll(&query, 1, milliseconds);
    } while (answer < 0 && errno == EINTR);
    return answer > 0;
}

} // namespace

LinuxChild::LinuxChild(SpawnedProcess spawned, ChildProcesses::Launch launch)
    : m_spawned(std::move(spawned))
    , m_launch(std::move(launch))
{ }

bool LinuxChild::isRunning() const
{
    return !hasEnded(m_spawned.process, 0);
}

void LinuxChild::terminate()
{
    // By its descriptor: an identifier may be another program's by now.
    pidfd_send_signal(m_spawned.process.number(), SIGTERM, nullptr, 0);
}

void LinuxChild::stopReading()
{
    const std::scoped_lock lock(m_readerMutex);
    m_isRead = false;
}

void LinuxChild::waitUntilExit()
{
    hasEnded(m_spawned.process, -1);
}

int LinuxChild::descriptor(Source source) const
{
    switch (source) {
    case Source::process:
        return m_spawned.process.number();
    case Source::standardOutput:
        return m_spawned.standardOutput.number();
    case Source::standardError:
        break;
    }
    return m_spawned.standardError.number();
}

bool LinuxChild::read(Source source)
{
    return readOnce(source, chunkSize) != 0;
}

void LinuxChild::close(Source source)
{
    pipe(source) = FileDescriptor();
}

void LinuxChild::finish()
{
    for (const Source source : {Source::standardOutput, Source::standardError}) {
        drain(source);
        close(source);
    }
    reap(m_spawned.process);
    if (m_launch.terminated)
        m_launch.terminated();
    m_launch = {}; // the handlers may hold this handle
}

void LinuxChild::abandon()
{
    reap(m_spawned.process, WNOHANG);
    m_launch = {};
}

void LinuxChild::kill() const
{
    pidfd_send_signal(m_spawned.process.number(), SIGKILL, nullptr, 0);
    reap(m_spawned.process);
}

FileDescriptor &LinuxChild::pipe(Source source)
{
    return source == Source::standardOutput ? m_spawned.standardOutput : m_spawned.standardError;
}

qsizetype LinuxChild::readOnce(Source source, qsizetype most)
{
    std::array<char, chunkSize> bytes;
    const auto count = ::read(pipe(source).number(), bytes.data(), std::size_t(std::min(most, chunkSize)));
    if (count > 0) {
        deliver(source == Source::standardOutput ? m_launch.standardOutput : m_launch.standardError,
            QByteArray(bytes.data(), count));
    }
    const bool isLater = count < 0 && (errno == EAGAIN || errno == EINTR);
    return count < 0 && !isLater ? 0 : count;
}

// No more than is there now: another program that inherited the pipe could go on writing for ever.
void LinuxChild::drain(Source source)
{
    int waiting = 0;
    if (!pipe(source) || ioctl(pipe(source).number(), FIONREAD, &waiting) != 0)
        return;
    while (waiting > 0) {
        const qsizetype count = readOnce(source, waiting);
        if (count <= 0)
            return;
        waiting -= int(count);
    }
}

void LinuxChild::deliver(const Reader &reader, const QByteArray &chunk)
{
    const std::scoped_lock lock(m_readerMutex);
    if (m_isRead)
        reader(chunk);
}

} // namespace brindle
