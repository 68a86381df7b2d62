#include "platform/linux/process/Spawn.h"

#include "platform/linux/process/PidFd.h"

#include <QByteArrayList>
#include <QFile>

#include <array>
#include <csignal>
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <vector>

namespace brindle {

namespace {

constexpr auto nowhere = "/dev/null";

struct Pipe
{
    FileDescriptor readEnd;
    FileDescriptor writeEnd;
};

std::optional<Pipe> makePipe()
{
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) != 0)
        return std::nullopt;
    Pipe made{FileDescriptor(ends[0]), FileDescriptor(ends[1])};
    // Only this end: the program's own one blocks, as programs expect.
    const bool isSet = fcntl(made.readEnd.number(), F_SETFL, O_NONBLOCK) == 0;
    return isSet ? std::optional(std::move(made)) : std::nullopt;
}

/// What the new program finds in place of this one's descriptors.
class FileActions
{
public:
    FileActions()
    {
        posix_spawn_file_actions_init(&m_actions);
        posix_spawn_file_actions_addopen(&m_actions, STDIN_FILENO, nowhere, O_RDONLY, 0);
    }
    FileActions(const FileActions &) = delete;
    FileActions &operator=(const FileActions &) = delete;
    ~FileActions() { posix_spawn_file_actions_destroy(&m_actions); }

    /// Lets the program's `target` lead into the pipe, or nowhere without one.
    void redirect(int target, const std::optional<Pipe> &pipe)
    {
        if (pipe)
            posix_spawn_file_actions_adddup2(&m_actions, pipe->writeEnd.number(), target);
        else
            posix_spawn_file_actions_addopen(&m_actions, target, nowhere, O_WRONLY, 0);
    }
    /// Whatever libraries opened without minding their children.
    void closeTheRest() { posix_spawn_file_actions_addclosefrom_np(&m_actions, STDERR_FILENO + 1); }

    const posix_spawn_file_actions_t *get() const { return &m_actions; }

private:
    posix_spawn_file_actions_t m_actions{};
};

/// Nothing blocked, nothing ignored, whatever holds for the thread that starts the program.
class Attributes
{
public:
    Attributes()
    {
        sigset_t none;
        sigset_t all;
        sigemptyset(&none);
        sigfillset(&all);
        posix_spawnattr_init(&m_attributes);
        posix_spawnattr_setsigmask(&m_attributes, &none);
        posix_spawnattr_setsigdefault(&m_attributes, &all);
        posix_spawnattr_setflags(&m_attributes, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
    }
    Attributes(const Attributes &) = delete;
    Attributes &operator=(const Attributes &) = delete;
    ~Attributes() { posix_spawnattr_destroy(&m_attributes); }

    const posix_spawnattr_t *get() const { return &m_attributes; }

private:
    posix_spawnattr_t m_attributes{};
};

/// The program's identifier, absent when it could not be started.
std::optional<pid_t> run(const QString &executable, const QStringList &arguments, const FileActions &files)
{
    QByteArrayList texts{QFile::encodeName(executable)};
    for (const QString &argument : arguments)
        texts.append(QFile::encodeName(argument));
    std::vector<char *> pointers;
    for (QByteArray &text : texts)
        pointers.push_back(text.data());
    pointers.push_back(nullptr);

    const Attributes attributes;
    pid_t pid = 0;
    const int error =
        posix_spawn(&pid, pointers.front(), files.get(), attributes.get(), pointers.data(), environ);
    return error == 0 ? std::optional(pid) : std::nullopt;
}

} // namespace

std::optional<SpawnedProcess> spawn(
    const QString &executable, const QStringList &arguments, bool wantsOutput, bool wantsError)
{
    auto output = wantsOutput ? makePipe() : std::nullopt;
    auto error = wantsError ? makePipe() : std::nullopt;
    if ((wantsOutput && !output) || (wantsError && !error))
        return std::nullopt;
    FileActions files;
    files.redirect(STDOUT_FILENO, output);
    files.redirect(STDERR_FILENO, error);
    files.closeTheRest();

    const auto pid = run(executable, arguments, files);
    if (!pid)
        return std::nullopt;
    // The identifier is the program's until it is reaped, however soon it ends.
    FileDescriptor process(pidfd_open(*pid, 0));
    if (!process) {
        kill(*pid, SIGKILL);
        waitpid(*pid, nullptr, 0);
        return std::nullopt;
    }
    return SpawnedProcess{std::move(process), output ? std::move(output->readEnd) : FileDescriptor(),
        error ? std::move(error->readEnd) : FileDescriptor()};
}

void reap(const FileDescriptor &process, int flags)
{
    siginfo_t information{};
    waitid(P_PIDFD, id_t(process.number()), &information, WEXITED | flags);
}

} // namespace brindle
