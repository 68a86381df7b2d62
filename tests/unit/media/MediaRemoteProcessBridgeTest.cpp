#include "media/MediaRemoteProcessBridge.h"

#include "foundation/ManualScheduler.h"
#include "platform/fake/FakeDesktop.h"
#include "platform/fake/FakeMedia.h"
#include "unit/media/Pictures.h"

#include <QDir>
#include <QTemporaryDir>

#include <gmock/gmock.h>
#include <limits>

namespace brindle {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

const QString framework = QStringLiteral("MediaRemoteAdapter.framework");

/// What the handlers were told, in words: a title, "nothing", "running" or "not running".
class MediaRemoteProcessBridgeTest : public testing::Test
{
protected:
    MediaRemoteProcessBridgeTest()
    {
        bundle.resources.insert(QStringLiteral("mediaremote-adapter.pl"), script);
        bundle.frameworks = folder.path();
        EXPECT_TRUE(QDir(folder.path()).mkdir(framework));
        workspace.install(QStringLiteral("org.example.player"), QStringLiteral("Player"));
    }

    bool start()
    {
        return bridge->start(
            [this](const std::optional<NowPlayingTrack> &track) {
                tracks.append(track);
                told.append(track ? track->title : QStringLiteral("nothing"));
            },
            [this](bool isRunning) {
                told.append(isRunning ? QStringLiteral("running") : QStringLiteral("not running"));
            });
    }
    void startQuietly()
    {
        ASSERT_TRUE(start());
        time.runPosted();
        told.clear();
    }
    FakeChildProcesses::Child &child() const { return *processes.children.back(); }
    void write(const QByteArray &chunk)
    {
        child().writeOutput(chunk);
        time.runPosted();
    }
    QStringList takeTold() { return std::exchange(told, {}); }
    /// The arguments of each command that was run, without those that all have.
    QList<QStringList> commands() const
    {
        QList<QStringList> all;
        for (const auto &one : processes.children) {
            EXPECT_EQ(one->launch().executable, QStringLiteral("/usr/bin/perl"));
            EXPECT_EQ(one->launch().arguments.first(2), QStringList({script, folder.filePath(framework)}));
            all.append(one->launch().arguments.sliced(2));
        }
        return all;
    }

    const QString script = QStringLiteral("/resources/mediaremote-adapter.pl");
    QTemporaryDir folder;
    ManualScheduler time{Date::fromSecondsSince1970(1'763'712'930)};
    FakeBundle bundle;
    FakeChildProcesses processes;
    FakeWorkspace workspace;
    FakeSerialQueue *ioQueue = new FakeSerialQueue(time); ///< the bridge's
    FakeSerialQueue *commandQueue = new FakeSerialQueue(time); ///< the bridge's
    std::unique_ptr<MediaRemoteProcessBridge> bridge =
        std::make_unique<MediaRemoteProcessBridge>(bundle, processes, workspace, time,
            std::unique_ptr<SerialQueue>(ioQueue), std::unique_ptr<SerialQueue>(commandQueue));
    QStringList told;
    QList<std::optional<NowPlayingTrack>> tracks;
};

TEST_F(MediaRemoteProcessBridgeTest, StartsTheAdapterAsAStream)
{
    EXPECT_FALSE(bridge->isRunning());
    EXPECT_TRUE(start());
    EXPECT_TRUE(bridge->isRunning());
    EXPECT_THAT(
        commands(), ElementsAre(QStringList{QStringLiteral("stream"), QStringLiteral("--debounce=80")}));
    EXPECT_THAT(told, IsEmpty()) << "handlers are called on later turns";
    time.runPosted();
    EXPECT_THAT(told, ElementsAre(QStringLiteral("running")));
}

/// Runs its work at once, as a thread may that is quicker than the one that posts.
class QuickQueue : public SerialQueue
{
public:
    void post(std::function<void()> work) override { work(); }
};

/// Its children have spoken before they are known.
class QuickChildren : public FakeChildProcesses
{
public:
    std::shared_ptr<ChildProcess> launch(Launch launch) override
    {
        auto child = FakeChildProcesses::launch(std::move(launch));
        children.back()->writeOutput(R"({"payload": {"title": "A"}})"
                                     "\n");
        return child;
    }
};

TEST_F(MediaRemoteProcessBridgeTest, ThatItRunsIsToldBeforeItsFirstLine)
{
    QuickChildren quick;
    bridge = std::make_unique<MediaRemoteProcessBridge>(
        bundle, quick, workspace, time, std::make_unique<QuickQueue>(), std::make_unique<QuickQueue>());
    ASSERT_TRUE(start());
    time.runPosted();
    EXPECT_THAT(told, ElementsAre(QStringLiteral("running"), QStringLiteral("A")));
}

TEST_F(MediaRemoteProcessBridgeTest, ASecondStartOnlyExchangesTheHandlers)
{
    startQuietly();
    QStringList others;
    EXPECT_TRUE(
        bridge->start([&others](const std::optional<NowPlayingTrack> &track) { others.append(track->title); },
            [&others](bool) { others.append(QStringLiteral("state")); }));
    write(R"({"payload": {"title": "A"}})"
          "\n");
    EXPECT_THAT(others, ElementsAre(QStringLiteral("A")));
    EXPECT_THAT(told, IsEmpty());
    EXPECT_EQ(processes.children.size(), 1u);
}

TEST_F(MediaRemoteProcessBridgeTest, WithoutTheScriptNothingIsStarted)
{
    bundle.resources.clear();
    EXPECT_FALSE(start());
    EXPECT_THAT(told, IsEmpty());
    time.runPosted();
    EXPECT_THAT(told, ElementsAre(QStringLiteral("not running")));
    EXPECT_FALSE(bridge->isRunning());
    EXPECT_TRUE(processes.children.empty());
}

TEST_F(MediaRemoteProcessBridgeTest, WithoutTheFrameworkNothingIsStarted)
{
    const auto refuses = [this] {
        const bool hasStarted = start();
        time.runPosted();
        return !hasStarted && takeTold() == QStringList{QStringLiteral("not running")}
        && processes.children.empty();
    };
    ASSERT_TRUE(QDir(folder.path()).rmdir(framework));
    EXPECT_TRUE(refuses()) << "the folder is missing";
    bundle.frameworks.reset();
    EXPECT_TRUE(refuses()) << "there is no folder of frameworks";
}

TEST_F(MediaRemoteProcessBridgeTest, AChildThatCannotBeStartedIsToldOf)
{
    processes.refusesLaunch = true;
    EXPECT_FALSE(start());
    EXPECT_FALSE(bridge->isRunning());
    time.runPosted();
    EXPECT_THAT(takeTold(), ElementsAre(QStringLiteral("not running")));

    processes.refusesLaunch = false;
    EXPECT_TRUE(start());
    time.runPosted();
    EXPECT_THAT(told, ElementsAre(QStringLiteral("running")));
}

TEST_F(MediaRemoteProcessBridgeTest, ALineSplitOverTwoChunksIsHandledOnceWhenItsLineFeedArrives)
{
    startQuietly();
    write(R"({"payload": {"ti)");
    EXPECT_THAT(told, IsEmpty());
    write(R"(tle": "A"}})");
    EXPECT_THAT(told, IsEmpty());
    write("\n");
    EXPECT_THAT(told, ElementsAre(QStringLiteral("A")));
}

TEST_F(MediaRemoteProcessBridgeTest, ThreeLinesInOneChunkAreHandledInOrder)
{
    startQuietly();
    write(R"({"payload": {"title": "A"}})"
          "\n"
          R"({"payload": {"title": "B"}})"
          "\n"
          R"({"payload": {"title": "C"}})"
          "\n");
    EXPECT_THAT(told, ElementsAre(QStringLiteral("A"), QStringLiteral("B"), QStringLiteral("C")));
}

TEST_F(MediaRemoteProcessBridgeTest, AnEmptyLineIsSkippedWithoutAnyEffect)
{
    startQuietly();
    write(R"({"payload": {"title": "A"}})"
          "\n\n\n"
          R"({"diff": true, "payload": {"artist": "B"}})"
          "\n");
    EXPECT_THAT(told, ElementsAre(QStringLiteral("A"), QStringLiteral("A")));
    EXPECT_EQ(tracks.last()->artist, QStringLiteral("B"));
}

TEST_F(MediaRemoteProcessBridgeTest, ATitleFollowedByADiffWithAnArtistGivesBoth)
{
    startQuietly();
    write(R"({"payload": {"title": "A"}})"
          "\n");
    write(R"({"diff": true, "payload": {"artist": "B"}})"
          "\n");
    EXPECT_EQ(tracks.last()->title, QStringLiteral("A"));
    EXPECT_EQ(tracks.last()->artist, QStringLiteral("B"));
    EXPECT_FALSE(tracks.first()->artist);
}

TEST_F(MediaRemoteProcessBridgeTest, ADiffWithANullForTheArtistRemovesIt)
{
    startQuietly();
    write(R"({"payload": {"title": "A", "artist": "B"}})"
          "\n");
    write(R"({"diff": true, "payload": {"artist": null}})"
          "\n");
    EXPECT_EQ(tracks.first()->artist, QStringLiteral("B"));
    EXPECT_EQ(tracks.last()->title, QStringLiteral("A"));
    EXPECT_FALSE(tracks.last()->artist);
}

TEST_F(MediaRemoteProcessBridgeTest, AnEmptyPayloadWithoutDiffEmptiesTheState)
{
    startQuietly();
    write(R"({"payload": {"title": "A", "artist": "B"}})"
          "\n"
          R"({"payload": {}})"
          "\n");
    EXPECT_THAT(takeTold(), ElementsAre(QStringLiteral("A"), QStringLiteral("nothing")));
    write(R"({"diff": true, "payload": {"title": "C"}})"
          "\n");
    EXPECT_FALSE(tracks.last()->artist);
}

TEST_F(MediaRemoteProcessBridgeTest, ADiffWithAnEmptyPayloadAlsoEmptiesTheState)
{
    startQuietly();
    write(R"({"payload": {"title": "A", "artist": "B"}})"
          "\n"
          R"({"diff": true, "payload": {}})"
          "\n");
    EXPECT_THAT(takeTold(), ElementsAre(QStringLiteral("A"), QStringLiteral("nothing")));
    write(R"({"diff": true, "payload": {"title": "C"}})"
          "\n");
    EXPECT_FALSE(tracks.last()->artist);
}

TEST_F(MediaRemoteProcessBridgeTest, ATitleOfBlanksGivesNothing)
{
    startQuietly();
    write(R"({"payload": {"title": " \n"}})"
          "\n");
    EXPECT_THAT(told, ElementsAre(QStringLiteral("nothing")));
}

TEST_F(MediaRemoteProcessBridgeTest, ALineThatIsNoneIsDroppedAndTheStateStays)
{
    startQuietly();
    write(R"({"payload": {"title": "A"}})"
          "\n");
    write("no json\n[]\n{}\n"
          R"({"payload": 3})"
          "\n");
    EXPECT_THAT(takeTold(), ElementsAre(QStringLiteral("A")));
    write(R"({"diff": true, "payload": {"artist": "B"}})"
          "\n");
    EXPECT_THAT(told, ElementsAre(QStringLiteral("A")));
}

TEST_F(MediaRemoteProcessBridgeTest, TheSourceIsLookedUpAndATimestampStandsInWhenTheTrackIsMade)
{
    startQuietly();
    child().writeOutput(R"({"payload": {"title": "A", "bundleIdentifier": "org.example.player"}})"
                        "\n");
    time.advance(2);
    EXPECT_EQ(tracks.last()->sourceName, QStringLiteral("Player"));
    EXPECT_EQ(tracks.last()->elapsedUpdatedAt, Date::fromSecondsSince1970(1'763'712'930));
}

TEST_F(MediaRemoteProcessBridgeTest, ALineWithAPictureOfMegabytesGivesItsTrack)
{
    startQuietly();
    // Noise behind the picture's end makes the file as large as one likes.
    const QByteArray file = pictureFile({640, 640}, "BMP") + QByteArray(15'000'000, 'x');
    const QByteArray line = R"({"payload": {"title": "A", "artworkData": ")" + file.toBase64() + "\"}}\n";
    for (qsizetype at = 0; at < line.size(); at += 65'536)
        child().writeOutput(line.sliced(at, std::min<qsizetype>(65'536, line.size() - at)));
    time.runPosted();
    ASSERT_THAT(takeTold(), ElementsAre(QStringLiteral("A")));
    ASSERT_TRUE(tracks.last()->artwork);
    EXPECT_EQ(tracks.last()->artwork->size(), QSize(640, 640));

    write(R"({"diff": true, "payload": {"elapsedTime": 1}})"
          "\n");
    ASSERT_TRUE(tracks.last()->artwork);
    EXPECT_EQ(tracks.last()->artwork->cacheKey(), tracks.first()->artwork->cacheKey()) << "decoded once";
}

TEST_F(MediaRemoteProcessBridgeTest, NothingIsParsedOnTheThreadOfTheReader)
{
    startQuietly();
    ioQueue->hold();
    write(R"({"payload": {"title": "A"}})"
          "\n");
    EXPECT_THAT(told, IsEmpty());
    EXPECT_EQ(ioQueue->waiting(), 1);
    ioQueue->release();
    time.runPosted();
    EXPECT_THAT(told, ElementsAre(QStringLiteral("A")));
}

TEST_F(MediaRemoteProcessBridgeTest, ATrackDoesNotSeeALaterMerge)
{
    startQuietly();
    child().writeOutput(R"({"payload": {"title": "A"}})"
                        "\n"
                        R"({"diff": true, "payload": {"artist": "B"}})"
                        "\n");
    time.runPosted();
    ASSERT_EQ(tracks.size(), 2);
    EXPECT_FALSE(tracks.first()->artist);
}

TEST_F(MediaRemoteProcessBridgeTest, ErrorOutputIsThrownAway)
{
    startQuietly();
    EXPECT_FALSE(child().launch().standardError);
}

TEST_F(MediaRemoteProcessBridgeTest, AChildThatEndsMeansNothingPlaysAndIsNotStartedAgain)
{
    startQuietly();
    write(R"({"payload": {"title": "A"}})"
          "\n");
    told.clear();
    child().exit();
    EXPECT_FALSE(bridge->isRunning());
    EXPECT_THAT(told, IsEmpty());
    time.advance(3600);
    EXPECT_THAT(told, ElementsAre(QStringLiteral("nothing"), QStringLiteral("not running")));
    EXPECT_EQ(processes.children.size(), 1u);
    EXPECT_EQ(time.pendingCount(), 0);
}

TEST_F(MediaRemoteProcessBridgeTest, WhatTheChildSaidLastIsToldBeforeItsEnd)
{
    startQuietly();
    child().writeOutput(R"({"payload": {"title": "A"}})"
                        "\n");
    child().exit();
    time.runPosted();
    EXPECT_THAT(
        told, ElementsAre(QStringLiteral("A"), QStringLiteral("nothing"), QStringLiteral("not running")));
}

TEST_F(MediaRemoteProcessBridgeTest, ALateChunkDoesNotBringBackTheOldTrack)
{
    startQuietly();
    const auto readOutput = child().launch().standardOutput; // one that was in the reader's hands already
    write(R"({"payload": {"title": "A"}})"
          "\n"
          R"({"payload": {"title": "B)");
    child().exit();
    time.runPosted();
    told.clear();
    readOutput(R"("}})"
               "\n"
               R"({"diff": true, "payload": {"artist": "B"}})"
               "\n");
    time.runPosted();
    EXPECT_THAT(told, Not(testing::Contains(QStringLiteral("A"))));
    EXPECT_THAT(told, Not(testing::Contains(QStringLiteral("B"))));
}

TEST_F(MediaRemoteProcessBridgeTest, ALineThatIsParsedAfterTheEndWasToldIsNoLongerTold)
{
    startQuietly();
    ioQueue->hold();
    child().writeOutput(R"({"payload": {"title": "A"}})"
                        "\n");
    child().exit();
    time.runPosted();
    EXPECT_THAT(takeTold(), ElementsAre(QStringLiteral("nothing"), QStringLiteral("not running")));
    ioQueue->release();
    time.runPosted();
    EXPECT_THAT(told, IsEmpty());
}

TEST_F(MediaRemoteProcessBridgeTest, MayBeStartedAnewAfterItsChildEnded)
{
    startQuietly();
    write(R"({"payload": {"title": "A", "artist": "B"}})"
          "\n"
          R"({"payl)");
    child().exit();
    time.runPosted();
    startQuietly();
    EXPECT_EQ(processes.children.size(), 2u);
    write(R"({"diff": true, "payload": {"title": "C"}})"
          "\n");
    EXPECT_THAT(told, ElementsAre(QStringLiteral("C")));
    EXPECT_FALSE(tracks.last()->artist) << "the new child begins with nothing";
}

TEST_F(MediaRemoteProcessBridgeTest, AnEndThatIsStillOnItsWayDoesNotEndTheNextChild)
{
    startQuietly();
    child().writeOutput(R"({"payload": {"title": "A"}})"
                        "\n");
    child().exit();
    EXPECT_TRUE(start());
    time.runPosted();
    EXPECT_TRUE(bridge->isRunning());
    EXPECT_THAT(takeTold(), ElementsAre(QStringLiteral("running")));
    write(R"({"payload": {"title": "B"}})"
          "\n");
    EXPECT_THAT(told, ElementsAre(QStringLiteral("B")));
}

TEST_F(MediaRemoteProcessBridgeTest, AStartBeforeAnEndIsToldIsNotUndoneByIt)
{
    startQuietly();
    child().exit();
    time.post([this] { start(); });
    time.runPosted();
    EXPECT_THAT(takeTold(),
        ElementsAre(QStringLiteral("nothing"), QStringLiteral("not running"), QStringLiteral("running")));
    write(R"({"payload": {"title": "B"}})"
          "\n");
    EXPECT_THAT(told, ElementsAre(QStringLiteral("B")));
}

TEST_F(MediaRemoteProcessBridgeTest, AFailedStartAfterAnEndThatIsOnItsWayStillTellsOfIt)
{
    startQuietly();
    child().exit();
    bundle.resources.clear();
    EXPECT_FALSE(start());
    time.runPosted();
    EXPECT_THAT(told,
        ElementsAre(QStringLiteral("not running"), QStringLiteral("nothing"), QStringLiteral("not running")));
}

TEST_F(MediaRemoteProcessBridgeTest, StopEndsTheChildInSilence)
{
    startQuietly();
    bridge->stop();
    EXPECT_TRUE(child().isTerminated);
    EXPECT_FALSE(bridge->isRunning());
    child().exit();
    time.runPosted();
    EXPECT_THAT(told, IsEmpty());
}

TEST_F(MediaRemoteProcessBridgeTest, AfterStopNothingThatIsOnItsWayIsTold)
{
    const auto stopAfter = [this](const std::function<void()> &act) {
        start();
        act();
        bridge->stop();
        time.runPosted();
        return takeTold();
    };
    EXPECT_THAT(stopAfter([] { }), IsEmpty()) << "that it runs";
    EXPECT_THAT(stopAfter([this] {
        child().writeOutput(R"({"payload": {"title": "A"}})"
                            "\n");
    }),
        IsEmpty());
    EXPECT_THAT(stopAfter([this] { child().exit(); }), IsEmpty());
    bundle.resources.clear();
    EXPECT_THAT(stopAfter([] { }), IsEmpty()) << "that it does not run";
}

TEST_F(MediaRemoteProcessBridgeTest, StopLeavesAChildThatHasEndedAlone)
{
    startQuietly();
    child().exit();
    bridge->stop();
    EXPECT_FALSE(child().isTerminated);
    bridge->stop();
}

TEST_F(MediaRemoteProcessBridgeTest, AStoppedChildCannotSpeakToTheNextStream)
{
    startQuietly();
    const auto readOutput = child().launch().standardOutput;
    write(R"({"payload": {"ti)");
    bridge->stop();
    startQuietly();
    readOutput(R"({"payload": {"title": "old"}})"
               "\n");
    write(R"({"diff": true, "payload": {"title": "new"}})"
          "\n");
    EXPECT_THAT(told, ElementsAre(QStringLiteral("new")));
}

TEST_F(MediaRemoteProcessBridgeTest, NothingIsCalledOnceTheBridgeIsGone)
{
    startQuietly();
    const auto last = processes.children.back();
    last->writeOutput(R"({"payload": {"title": "A"}})"
                      "\n");
    bridge.reset();
    EXPECT_TRUE(last->isTerminated);
    last->writeOutput(R"({"payload": {"title": "B"}})"
                      "\n");
    last->exit();
    time.runPosted();
    EXPECT_THAT(told, IsEmpty());
}

TEST_F(MediaRemoteProcessBridgeTest, AHandlerMayStopOrStartTheBridge)
{
    ASSERT_TRUE(bridge->start([this](const std::optional<NowPlayingTrack> &) { start(); },
        [this](bool isRunning) {
            if (!isRunning)
                bridge->stop();
        }));
    write(R"({"payload": {"title": "A"}})"
          "\n");
    write(R"({"payload": {"title": "B"}})"
          "\n");
    EXPECT_THAT(told, ElementsAre(QStringLiteral("B")));
}

TEST_F(MediaRemoteProcessBridgeTest, ACommandIsARunOfTheAdapterThatIsWaitedFor)
{
    for (const char *command : {"0", "1", "4", "5"})
        bridge->send({QStringLiteral("send"), QString::fromLatin1(command)});
    EXPECT_TRUE(processes.children.empty()) << "commands run on their queue";
    time.runPosted();
    QStringList sent;
    for (const QStringList &command : commands())
        sent.append(command.join(u' '));
    EXPECT_THAT(sent,
        ElementsAre(QStringLiteral("send 0"), QStringLiteral("send 1"), QStringLiteral("send 4"),
            QStringLiteral("send 5")));
    for (const auto &one : processes.children) {
        EXPECT_EQ(one->waits, 1);
        EXPECT_FALSE(one->launch().standardOutput);
        EXPECT_FALSE(one->launch().standardError);
    }
    EXPECT_THAT(told, IsEmpty());
}

TEST_F(MediaRemoteProcessBridgeTest, ASeekIsSentInMicroseconds)
{
    const auto sent = [this](double seconds) {
        bridge->seek(seconds);
        time.runPosted();
        EXPECT_EQ(commands().last().size(), 2);
        EXPECT_EQ(commands().last().first(), QStringLiteral("seek"));
        return commands().last().last().toStdString();
    };
    EXPECT_EQ(sent(12.5), "12500000");
    EXPECT_EQ(sent(0), "0");
    EXPECT_EQ(sent(-3), "0");
    EXPECT_EQ(sent(0.0000014), "1");
    EXPECT_EQ(sent(0.0000015), "2");
    EXPECT_EQ(sent(100'000), "100000000000");
    EXPECT_EQ(sent(std::numeric_limits<double>::quiet_NaN()), "0");
    EXPECT_EQ(sent(std::numeric_limits<double>::infinity()), "9000000000000000000");
}

TEST_F(MediaRemoteProcessBridgeTest, WithoutTheAdapterACommandIsDropped)
{
    bundle.frameworks.reset();
    bridge->seek(1);
    time.runPosted();
    EXPECT_TRUE(processes.children.empty());
}

TEST_F(MediaRemoteProcessBridgeTest, ACommandThatCannotBeStartedIsDropped)
{
    processes.refusesLaunch = true;
    bridge->seek(1);
    time.runPosted();
    processes.refusesLaunch = false;
    bridge->seek(2);
    time.runPosted();
    EXPECT_EQ(processes.children.size(), 1u);
    EXPECT_THAT(told, IsEmpty());
}

TEST_F(MediaRemoteProcessBridgeTest, CommandsThatWaitWhenTheBridgeGoesAreDropped)
{
    commandQueue->hold();
    bridge->seek(1);
    bridge.reset();
    time.runPosted();
    EXPECT_TRUE(processes.children.empty());
}

} // namespace
} // namespace brindle
