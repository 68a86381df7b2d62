#include "platform/linux/process/LinuxChildProcesses.h"

#include "contract/process/LinuxChildWorld.h"
#include "foundation/SystemScheduler.h"
#include "foundation/ThreadQueue.h"
#include "platform/linux/process/PidFd.h"
#include "support/EventLoop.h"

#include <QDir>
#include <QSocketNotifier>
#include <QtEndian>

#include <atomic>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <future>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <thread>
#include <vector>

namespace brindle::test {
namespace {

class LinuxChildProcessesTest : public testing::Test
{
protected:
    LinuxChildProcessesTest()
    {
        while (waitpid(-1, nullptr, 0) > 0) { } // what earlier tests of this process left running
    }

    /// A program, and what is heard of it.
    struct Heard
    {
        QByteArray output;
        bool hasEnded = false;
        std::shared_ptr<ChildProcess> handle;
    };

    std::shared_ptr<Heard> start(const QString &executable, const QStringList &arguments)
    {
        auto heard = std::make_shared<Heard>();
        heard->handle = processes->launch({executable, arguments,
            [this, heard](const QByteArray &chunk) { time.post([heard, chunk] { heard->output += chunk; }); },
            {}, [this, heard] { time.post([heard] { heard->hasEnded = true; }); }});
        return heard;
    }
    std::shared_ptr<Heard> shell(const QString &script)
    {
        return start(QStringLiteral("/bin/sh"), {QStringLiteral("-c"), script});
    }
    std::shared_ptr<Heard> perl(const QString &script)
    {
        return start(QStringLiteral("/usr/bin/perl"), {QStringLiteral("-e"), script});
    }
    /// Ends the thread that watches, so that all that it had begun is done.
    void startAfresh()
    {
        processes.reset();
        processes = std::make_unique<LinuxChildProcesses>();
    }
    static bool ends(const std::shared_ptr<Heard> &heard)
    {
        return heard->handle && eventually([&] { return heard->hasEnded; });
    }
    static qsizetype openDescriptors()
    {
        return QDir(QStringLiteral("/proc/self/fd"))
            .entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot)
            .size();
    }
    /// No child of this program is left, neither running nor as a zombie.
    static bool isChildless() { return waitpid(-1, nullptr, WNOHANG) == -1 && errno == ECHILD; }

    SystemScheduler time; // first, since the threads post to it
    std::unique_ptr<LinuxChildProcesses> processes = std::make_unique<LinuxChildProcesses>();
};

TEST_F(LinuxChildProcessesTest, GetsItsArgumentsAsTheyAre)
{
    const auto heard = start(QStringLiteral("/usr/bin/printf"),
        {QStringLiteral("[%s]"), QString(), QStringLiteral("a b"), QStringLiteral("$HOME '\"\\"),
            QStringLiteral("\u00fc\u266b")});
    ASSERT_TRUE(ends(heard));
    EXPECT_EQ(QString::fromUtf8(heard->output), QStringLiteral("[][a b][$HOME '\"\\][\u00fc\u266b]"));
}

TEST_F(LinuxChildProcessesTest, WhatCannotBeExecutedIsNullAndLeavesNothingBehind)
{
    QTemporaryDir folder;
    QFile notExecutable(folder.filePath(QStringLiteral("plain")));
    ASSERT_TRUE(notExecutable.open(QIODevice::WriteOnly));
    QFile notAProgram(folder.filePath(QStringLiteral("text")));
    ASSERT_TRUE(notAProgram.open(QIODevice::WriteOnly));
    notAProgram.write("no program at all");
    notAProgram.close();
    ASSERT_TRUE(notAProgram.setPermissions(QFile::ReadOwner | QFile::ExeOwner));
    start(QStringLiteral("/missing"), {}); // brings up all that stays
    const qsizetype before = openDescriptors();
    for (const QString &path : {QStringLiteral("/missing"), folder.path(), notExecutable.fileName(),
             notAProgram.fileName(), QStringLiteral("sh"), QString()}) {
        EXPECT_EQ(start(path, {})->handle, nullptr) << path.toStdString();
    }
    EXPECT_EQ(start(QStringLiteral("/bin/true"), {QString(8'000'000, u'x')})->handle, nullptr) << "too long";
    EXPECT_EQ(openDescriptors(), before);
    EXPECT_TRUE(isChildless());
}

TEST_F(LinuxChildProcessesTest, WithoutAFreeDescriptorNothingIsStarted)
{
    ASSERT_TRUE(ends(shell(QStringLiteral("exit")))); // brings up all that stays
    std::vector<FileDescriptor> all;
    for (int number = open("/dev/null", O_RDONLY | O_CLOEXEC); number >= 0;
        number = open("/dev/null", O_RDONLY | O_CLOEXEC))
        all.emplace_back(number);
    // With each one that is given back, the launch comes a step further.
    int refused = 0;
    for (auto heard = shell(QStringLiteral("exit")); !heard->handle; heard = shell(QStringLiteral("exit"))) {
        ASSERT_LT(++refused, 10);
        all.pop_back();
    }
    EXPECT_GE(refused, 3) << "two for the pipe, one for the program";
}

TEST_F(LinuxChildProcessesTest, HugeOutputArrivesWholeAndInOrder)
{
    const auto heard = perl(QStringLiteral("print pack('N*', $_ * 1000 .. $_ * 1000 + 999) for 0 .. 4999"));
    ASSERT_TRUE(ends(heard));
    QByteArray expected;
    for (quint32 i = 0; i < 5'000'000; ++i) {
        char number[4];
        qToBigEndian(i, number);
        expected.append(number, sizeof number);
    }
    EXPECT_EQ(heard->output.size(), expected.size());
    EXPECT_TRUE(heard->output == expected);
}

TEST_F(LinuxChildProcessesTest, AProgramThatClosesItsOutputGoesOn)
{
    LinuxChildWorld world;
    std::promise<void> heard;
    std::promise<void> ended;
    auto launch = world.obedientProgram();
    launch.standardOutput = [&heard](const QByteArray &) { heard.set_value(); };
    launch.terminated = [&ended] { ended.set_value(); };
    const auto child = world.port().launch(launch);
    ASSERT_TRUE(child);
    world.write("x");
    heard.get_future().wait();
    const qsizetype before = openDescriptors();
    world.tell("exec >&-");
    // The pipe is let go of: what has ended would wake the thread again and again.
    while (openDescriptors() != before - 1)
        std::this_thread::yield();
    EXPECT_TRUE(child->isRunning());
    world.exit();
    ended.get_future().wait();
    EXPECT_FALSE(child->isRunning());
}

TEST_F(LinuxChildProcessesTest, AnotherProgramThatKeepsThePipeDoesNotHoldUpTheEnd)
{
    // The one that stays waits at a pipe of which the test has the other end.
    QTemporaryDir folder;
    const QByteArray gate = QFile::encodeName(folder.filePath(QStringLiteral("gate")));
    ASSERT_EQ(mkfifo(gate.constData(), 0600), 0);
    const FileDescriptor held(open(gate.constData(), O_RDWR | O_CLOEXEC));
    const auto heard = shell(QStringLiteral("(read line < '%1') & echo parent").arg(QFile::decodeName(gate)));
    ASSERT_TRUE(ends(heard));
    EXPECT_EQ(heard->output, "parent\n");
    EXPECT_EQ(write(held.number(), "\n", 1), 1); // lets it go
}

TEST_F(LinuxChildProcessesTest, AnotherProgramThatFloodsThePipeDoesNotHoldUpTheEnd)
{
    constexpr qsizetype pipeSize = 65'536;
    LinuxChildWorld world;
    std::promise<std::shared_ptr<ChildProcess>> launched;
    std::promise<void> flooded;
    std::promise<void> ended;
    qsizetype readAfterEnd = 0;
    auto launch = world.obedientProgram();
    launch.standardOutput = [&, known = launched.get_future().share(), isFirst = true](
                                const QByteArray &chunk) mutable {
        if (std::exchange(isFirst, false))
            flooded.set_value();
        // Slow enough that the pipe is full again after each piece.
        for (int i = 0; i < 1000; ++i)
            std::this_thread::yield();
        if (!known.get()->isRunning())
            readAfterEnd += chunk.size();
    };
    launch.terminated = [&ended] { ended.set_value(); };
    launched.set_value(world.port().launch(launch));
    world.tell("yes &");
    flooded.get_future().wait();
    world.exit();
    ended.get_future().wait();
    // What was being read, what was read as the end came, and what was there then.
    EXPECT_LE(readAfterEnd, 3 * pipeSize);
}

TEST_F(LinuxChildProcessesTest, NoZombiesAndNoDescriptorsAreLeft)
{
    ASSERT_TRUE(ends(shell(QStringLiteral("exit")))); // brings up all that stays
    startAfresh();
    const qsizetype before = openDescriptors();
    for (int turn = 0; turn < 20; ++turn) {
        EXPECT_TRUE(ends(shell(QStringLiteral("echo out; echo error >&2; exit 3"))));
        EXPECT_TRUE(ends(shell(QStringLiteral("kill -9 $$"))));
    }
    EXPECT_TRUE(ends(shell(QStringLiteral("exec >&-; exit"))));
    processes->launch({QStringLiteral("/bin/true"), {}, {}, {}, {}})->waitUntilExit();
    startAfresh();
    EXPECT_TRUE(isChildless());
    EXPECT_EQ(openDescriptors(), before);
}

TEST_F(LinuxChildProcessesTest, AProgramInheritsNoDescriptorButItsThree)
{
    const FileDescriptor careless(open("/dev/null", O_RDONLY)); // NOLINT(*-cloexec-open): that is the point
    const auto heard = perl(QStringLiteral(
        "opendir($d, '/proc/self/fd'); print join(' ', sort grep { !/^\\./ } readdir $d), \"\\n\", "
        "map { readlink(\"/proc/self/fd/$_\") . \"\\n\" } 0, 2"));
    ASSERT_TRUE(ends(heard));
    EXPECT_EQ(heard->output.toStdString(), "0 1 2 3\n/dev/null\n/dev/null\n")
        << "3 is the folder that it reads";
}

TEST_F(LinuxChildProcessesTest, AProgramStartsWithTheSignalsOfAShell)
{
    sigset_t blocked;
    sigset_t before;
    sigemptyset(&blocked);
    sigaddset(&blocked, SIGTERM);
    sigaddset(&blocked, SIGUSR1);
    ASSERT_EQ(pthread_sigmask(SIG_BLOCK, &blocked, &before), 0);
    const auto oldPipe = signal(SIGPIPE, SIG_IGN);
    const auto heard = start(QStringLiteral("/bin/grep"),
        {QStringLiteral("-E"), QStringLiteral("^Sig(Blk|Ign):"), QStringLiteral("/proc/self/status")});
    EXPECT_TRUE(ends(heard));
    // The C library keeps two signals of its own, 32 and 33, ignored in what it starts.
    constexpr qulonglong everyone = 0x7fff'ffff;
    const QByteArrayList words = heard->output.simplified().split(' ');
    EXPECT_EQ(words.value(0), "SigBlk:");
    EXPECT_EQ(words.value(1).toULongLong(nullptr, 16), 0u);
    EXPECT_EQ(words.value(2), "SigIgn:");
    EXPECT_EQ(words.value(3).toULongLong(nullptr, 16) & everyone, 0u);
    signal(SIGPIPE, oldPipe);
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
}

TEST_F(LinuxChildProcessesTest, TheChildrenOfOthersAreLeftToThem)
{
    const auto heard = shell(QStringLiteral("exit"));
    EXPECT_EQ(WEXITSTATUS(std::system("exit 7")), 7); // NOLINT(cert-env33-c,concurrency-mt-unsafe)
    EXPECT_TRUE(ends(heard));
    struct sigaction action{};
    ASSERT_EQ(sigaction(SIGCHLD, nullptr, &action), 0);
    EXPECT_EQ(action.sa_handler, SIG_DFL);
}

TEST_F(LinuxChildProcessesTest, AQueueWaitsForTheEnd)
{
    LinuxChildWorld world;
    auto launch = world.obedientProgram();
    const auto child = world.port().launch(launch);
    ASSERT_TRUE(child);
    std::promise<bool> seen;
    ThreadQueue queue(QStringLiteral("com.brindle.test"));
    queue.post([&] {
        child->waitUntilExit();
        seen.set_value(child->isRunning());
    });
    EXPECT_TRUE(child->isRunning());
    world.exit();
    EXPECT_FALSE(seen.get_future().get());
}

TEST_F(LinuxChildProcessesTest, AReaderMayStopTheReading)
{
    std::promise<std::shared_ptr<ChildProcess>> handle;
    auto known = handle.get_future().share();
    std::promise<void> ended;
    std::vector<QByteArray> chunks;
    handle.set_value(processes->launch(
        {QStringLiteral("/usr/bin/perl"), {QStringLiteral("-e"), QStringLiteral("print 'x' x 1_000_000")},
            [&chunks, known](const QByteArray &chunk) {
                chunks.push_back(chunk);
                known.get()->stopReading();
            },
            {}, [&ended] { ended.set_value(); }}));
    ended.get_future().wait();
    EXPECT_EQ(chunks.size(), 1u);
}

TEST_F(LinuxChildProcessesTest, StoppingTheReadingWaitsForAReaderThatRuns)
{
    std::promise<void> entered;
    std::promise<void> leave;
    bool hasLeft = false; // not atomic: stopping is what orders the two
    int calls = 0;
    const auto child = processes->launch(
        {QStringLiteral("/usr/bin/perl"), {QStringLiteral("-e"), QStringLiteral("print 'x' x 1_000_000")},
            [&](const QByteArray &) {
                if (++calls > 1)
                    return;
                entered.set_value();
                leave.get_future().wait();
                hasLeft = true;
            },
            {}, {}});
    ASSERT_TRUE(child);
    entered.get_future().wait();
    std::atomic<bool> isStopping = false;
    auto stopped = std::async(std::launch::async, [&] {
        isStopping = true;
        child->stopReading();
        return hasLeft;
    });
    while (!isStopping)
        std::this_thread::yield();
    leave.set_value();
    EXPECT_TRUE(stopped.get());
}

TEST_F(LinuxChildProcessesTest, ManyProgramsRunAtOnceWithoutMixingWhatTheySay)
{
    std::mutex mutex;
    std::vector<std::shared_ptr<Heard>> all;
    std::vector<std::thread> starters;
    starters.reserve(4);
    for (int starter = 0; starter < 4; ++starter) {
        starters.emplace_back([&, starter] {
            for (int i = 0; i < 10; ++i) {
                auto heard =
                    shell(QStringLiteral("for i in 1 2 3 4 5; do echo %1-%2; done").arg(starter).arg(i));
                const std::scoped_lock lock(mutex);
                all.push_back(std::move(heard));
            }
        });
    }
    for (std::thread &starter : starters)
        starter.join();
    QSet<QByteArray> outputs;
    for (const auto &heard : all) {
        ASSERT_TRUE(ends(heard));
        const QByteArray line = heard->output.first(heard->output.indexOf('\n') + 1);
        EXPECT_EQ(heard->output, line.repeated(5));
        outputs.insert(heard->output);
    }
    EXPECT_EQ(outputs.size(), 40);
}

TEST_F(LinuxChildProcessesTest, WhenThePortGoesItsProgramsGoOnAndTheirHandlesStayGood)
{
    const auto heard = shell(QStringLiteral("echo up; read forever < /dev/zero"));
    ASSERT_TRUE(eventually([&] { return heard->output == "up\n"; }));
    processes.reset();
    EXPECT_TRUE(heard->handle->isRunning());
    heard->handle->terminate();
    heard->handle->waitUntilExit();
    EXPECT_FALSE(heard->handle->isRunning());
    deliverEvents();
    EXPECT_FALSE(heard->hasEnded) << "nobody tells any more";
    while (waitpid(-1, nullptr, 0) > 0) { } // this test's own to clear away
}

/// What happens to a program whose parent is killed, as by the kernel when memory runs out.
class KilledParentTest : public LinuxChildProcessesTest
{
protected:
    /// Whether `script`, which first writes its process identifier, ends with its parent.
    bool endsWithItsParent(const QStringList &program)
    {
        const auto parent = start(QStringLiteral(BRINDLE_KILLED_PARENT), program);
        if (!parent->handle || !eventually([&] { return parent->output.contains('\n'); }))
            return false;
        const QByteArray line = parent->output.first(parent->output.indexOf('\n'));
        const FileDescriptor child(pidfd_open(line.toInt(), 0));
        const FileDescriptor parentItself(pidfd_open(parentOf(line.toInt()), 0));
        if (!child || !parentItself)
            return false;
        bool hasEnded = false;
        QSocketNotifier notifier(child.number(), QSocketNotifier::Read);
        QObject::connect(&notifier, &QSocketNotifier::activated, &notifier, [&] {
            hasEnded = true;
            notifier.setEnabled(false);
        });
        deliverEvents();
        EXPECT_FALSE(hasEnded);
        pidfd_send_signal(parentItself.number(), SIGKILL, nullptr, 0);
        return eventually([&] { return hasEnded; }) && ends(parent);
    }

private:
    static pid_t parentOf(pid_t child)
    {
        QFile status(QStringLiteral("/proc/%1/stat").arg(child));
        return status.open(QIODevice::ReadOnly) ? status.readAll().split(' ').value(3).toInt() : 0;
    }
};

TEST_F(KilledParentTest, AProgramThatWritesEndsWithItsParent)
{
    EXPECT_TRUE(endsWithItsParent(
        {QStringLiteral("/bin/sh"), QStringLiteral("-c"), QStringLiteral("echo $$; exec yes")}));
}

TEST_F(KilledParentTest, AProgramThatIsSilentCanNoticeThatItsReaderHasGone)
{
    EXPECT_TRUE(endsWithItsParent(
        {QStringLiteral("/usr/bin/perl"), QStringLiteral("-MIO::Poll"), QStringLiteral("-e"),
            QStringLiteral(
                "$| = 1; print \"$$\\n\"; $p = IO::Poll->new; $p->mask(*STDOUT => POLLERR); $p->poll(-1)")}));
}

} // namespace
} // namespace brindle::test
