#include "foundation/SystemScheduler.h"
#include "foundation/ThreadQueue.h"
#include "media/MediaRemoteProcessBridge.h"
#include "platform/fake/FakeDesktop.h"
#include "platform/fake/FakeMedia.h"
#include "platform/linux/process/LinuxChildProcesses.h"
#include "support/EventLoop.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gmock/gmock.h>

namespace brindle::test {
namespace {

using testing::ElementsAre;

/// The bridge on the machine's own threads, time and processes, with a script in the adapter's place.
class AdapterChildTest : public testing::Test
{
protected:
    AdapterChildTest()
    {
        bundle.resources.insert(QStringLiteral("mediaremote-adapter.pl"), script);
        bundle.frameworks = folder.path();
        EXPECT_TRUE(QDir(folder.path()).mkdir(QStringLiteral("MediaRemoteAdapter.framework")));
    }

    /// The program text; `@ARGV` begins with the framework, and `$folder` is the test's own.
    void install(const QString &perl) const
    {
        QFile file(script);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write((QStringLiteral("$| = 1; $folder = '%1'; ").arg(folder.path()) + perl).toUtf8());
    }
    bool start()
    {
        return bridge->start(
            [this](const std::optional<NowPlayingTrack> &track) {
                told.append(track ? track->title : QStringLiteral("nothing"));
            },
            [this](bool isRunning) {
                told.append(isRunning ? QStringLiteral("running") : QStringLiteral("not running"));
            });
    }
    bool isTold(const QString &last)
    {
        return eventually([&] { return !told.isEmpty() && told.last() == last; });
    }

    QTemporaryDir folder;
    const QString script = folder.filePath(QStringLiteral("adapter.pl"));
    SystemScheduler time;
    FakeBundle bundle;
    FakeWorkspace workspace;
    LinuxChildProcesses processes;
    std::unique_ptr<MediaRemoteProcessBridge> bridge = std::make_unique<MediaRemoteProcessBridge>(bundle,
        processes, workspace, time, std::make_unique<ThreadQueue>(MediaRemoteProcessBridge::ioQueueLabel()),
        std::make_unique<ThreadQueue>(MediaRemoteProcessBridge::commandQueueLabel()));
    QStringList told;
};

TEST_F(AdapterChildTest, LinesBecomeTracksUntilTheAdapterEnds)
{
    install(QStringLiteral(
        R"(print STDERR 'x' x 200_000; print qq({"payload": {"title": "$_"}}\n) for 1 .. 3;)"));
    ASSERT_TRUE(start());
    ASSERT_TRUE(isTold(QStringLiteral("not running")));
    EXPECT_EQ(told.first(), QStringLiteral("running"));
    EXPECT_EQ(
        told.mid(told.size() - 2), QStringList({QStringLiteral("nothing"), QStringLiteral("not running")}));
    EXPECT_FALSE(bridge->isRunning());
}

TEST_F(AdapterChildTest, EveryLineOfAFloodIsToldInOrder)
{
    install(QStringLiteral(
        R"(print qq({"diff": true, "payload": {"title": "$_"}}\n) for 1 .. 20_000; <STDIN>; select(undef, undef, undef, undef))"));
    ASSERT_TRUE(start());
    ASSERT_TRUE(isTold(QStringLiteral("20000")));
    ASSERT_EQ(told.size(), 20'001);
    for (int i = 1; i <= 20'000; ++i)
        ASSERT_EQ(told.at(i), QString::number(i));
}

TEST_F(AdapterChildTest, StopEndsTheAdapterInSilence)
{
    install(QStringLiteral(R"(print qq({"payload": {"title": "A"}}\n); select(undef, undef, undef, undef))"));
    ASSERT_TRUE(start());
    ASSERT_TRUE(isTold(QStringLiteral("A")));
    EXPECT_TRUE(bridge->isRunning());
    told.clear();
    bridge->stop();
    EXPECT_FALSE(bridge->isRunning());
    ASSERT_TRUE(start());
    ASSERT_TRUE(isTold(QStringLiteral("A")));
    EXPECT_THAT(told, ElementsAre(QStringLiteral("running"), QStringLiteral("A")));
}

TEST_F(AdapterChildTest, MayGoInTheMiddleOfAFlood)
{
    install(QStringLiteral(R"(print qq({"payload": {"title": "A"}}\n) while 1)"));
    ASSERT_TRUE(start());
    ASSERT_TRUE(isTold(QStringLiteral("A")));
    bridge.reset();
    told.clear();
    deliverEvents();
    EXPECT_TRUE(told.isEmpty());
}

TEST_F(AdapterChildTest, CommandsRunOneAtATimeInTheOrderOfSending)
{
    // The earlier ones take longer, so that anything but waiting would turn the order round.
    install(QStringLiteral(
        R"(open(L, '>>', "$folder/log"); L->autoflush; print L "<$ARGV[2]"; select(undef, undef, undef, 0.05 / (1 + $ARGV[2])); print L '>';
        if ($ARGV[2] == 5) { open(D, '>', "$folder/done"); })"));
    for (const char *command : {"0", "1", "4", "5"})
        bridge->send({QStringLiteral("send"), QString::fromLatin1(command)});
    QFile done(folder.filePath(QStringLiteral("done")));
    while (!done.exists())
        QThread::yieldCurrentThread();
    bridge.reset(); // waits for the last
    QFile log(folder.filePath(QStringLiteral("log")));
    ASSERT_TRUE(log.open(QIODevice::ReadOnly));
    EXPECT_TRUE(log.readAll().startsWith("<0><1><4><5"));
}

TEST_F(AdapterChildTest, ACommandThatHangsDoesNotKeepTheBridgeFromGoing)
{
    install(QStringLiteral(R"(open(D, '>', "$folder/hanging"); select(undef, undef, undef, undef))"));
    bridge->seek(3);
    bridge->seek(4);
    QFile hanging(folder.filePath(QStringLiteral("hanging")));
    while (!hanging.exists())
        QThread::yieldCurrentThread();
    bridge.reset();
}

} // namespace
} // namespace brindle::test
