#include "contract/process/FakeChildWorld.h"
#include "contract/process/LinuxChildWorld.h"
#include "foundation/SystemScheduler.h"
#include "platform/null/NullPorts.h"
#include "support/EventLoop.h"

#include <gmock/gmock.h>

namespace brindle::test {

/// What the port promises, whoever keeps it.
template <typename World> class ChildProcessesContract : public testing::Test
{
protected:
    std::shared_ptr<ChildProcess> start() { return start(world.obedientProgram()); }

    std::shared_ptr<ChildProcess> start(ChildProcesses::Launch launch)
    {
        launch.standardOutput = [this](const QByteArray &chunk) { tell([this, chunk] { output += chunk; }); };
        launch.standardError = [this](const QByteArray &chunk) { tell([this, chunk] { error += chunk; }); };
        return startWithoutReaders(std::move(launch));
    }

    std::shared_ptr<ChildProcess> startWithoutReaders(ChildProcesses::Launch launch)
    {
        launch.terminated = [this] {
            tell([this] {
                outputAtEnd = output;
                ++ends;
            });
        };
        return world.port().launch(std::move(launch));
    }

    /// To the main thread, in order.
    void tell(std::function<void()> work) { time.post(std::move(work)); }
    bool hasWritten(const QByteArray &text)
    {
        return eventually([&] { return output == text; });
    }
    bool hasEnded()
    {
        return eventually([&] { return ends > 0; });
    }

    SystemScheduler time; // first, since the world's threads post to it
    QByteArray output;
    QByteArray outputAtEnd;
    QByteArray error;
    int ends = 0;
    World world;
};

using Worlds = testing::Types<FakeChildWorld, LinuxChildWorld>;
TYPED_TEST_SUITE(ChildProcessesContract, Worlds);

TYPED_TEST(ChildProcessesContract, WhatTheProgramWritesArrivesInOrder)
{
    const auto child = this->start();
    ASSERT_TRUE(child);
    this->world.write("one ");
    EXPECT_TRUE(this->hasWritten("one ")) << "as it is written, not at the end";
    this->world.write("two ");
    this->world.write("three");
    EXPECT_TRUE(this->hasWritten("one two three"));
    EXPECT_EQ(this->error, QByteArray());
}

TYPED_TEST(ChildProcessesContract, OutputAndErrorsArriveApart)
{
    const auto child = this->start();
    this->world.writeError("bad");
    this->world.write("good");
    EXPECT_TRUE(eventually([this] { return this->output == "good" && this->error == "bad"; }));
}

TYPED_TEST(ChildProcessesContract, TheEndIsToldOnceAfterTheLastChunk)
{
    const auto child = this->start();
    this->world.write("last words");
    this->world.exit();
    ASSERT_TRUE(this->hasEnded());
    EXPECT_EQ(this->outputAtEnd, "last words");
    deliverEvents();
    EXPECT_EQ(this->ends, 1);
}

TYPED_TEST(ChildProcessesContract, RunsUntilItEnds)
{
    const auto child = this->start();
    EXPECT_TRUE(child->isRunning());
    this->world.write("still here");
    EXPECT_TRUE(this->hasWritten("still here"));
    EXPECT_TRUE(child->isRunning());
    this->world.exit();
    ASSERT_TRUE(this->hasEnded());
    EXPECT_FALSE(child->isRunning());
    child->waitUntilExit(); // at once
}

TYPED_TEST(ChildProcessesContract, AnEndThatWasAskedForComesAsAnyOther)
{
    const auto child = this->start();
    this->world.write("ready");
    ASSERT_TRUE(this->hasWritten("ready"));
    child->terminate();
    this->world.obeyTermination();
    EXPECT_TRUE(this->hasEnded());
    EXPECT_FALSE(child->isRunning());
    child->terminate(); // nobody is there to mind
}

TYPED_TEST(ChildProcessesContract, OnceReadingWasStoppedNothingMoreIsReadButTheEndIsTold)
{
    const auto child = this->start();
    this->world.write("heard");
    ASSERT_TRUE(this->hasWritten("heard"));
    child->stopReading();
    this->world.write("unheard");
    this->world.writeError("unheard");
    this->world.exit();
    ASSERT_TRUE(this->hasEnded());
    EXPECT_EQ(this->output, "heard");
    EXPECT_EQ(this->error, QByteArray());
    child->stopReading(); // again
}

TYPED_TEST(ChildProcessesContract, WhatNobodyReadsIsThrownAway)
{
    const auto child = this->startWithoutReaders(this->world.obedientProgram());
    this->world.write("unheard");
    this->world.writeError("unheard");
    this->world.exit();
    EXPECT_TRUE(this->hasEnded());
}

TYPED_TEST(ChildProcessesContract, AProgramThatCannotBeStartedIsNull)
{
    auto launch = this->world.obedientProgram();
    this->world.refuse(launch);
    EXPECT_EQ(this->start(launch), nullptr);
    deliverEvents();
    EXPECT_EQ(this->ends, 0);
}

TYPED_TEST(ChildProcessesContract, DroppingTheHandleNeitherEndsTheProgramNorSilencesIt)
{
    this->start();
    this->world.write("still here");
    EXPECT_TRUE(this->hasWritten("still here"));
    this->world.exit();
    EXPECT_TRUE(this->hasEnded());
}

TEST(NullChildProcesses, StartsNothing)
{
    NullChildProcesses processes;
    EXPECT_EQ(processes.launch({QStringLiteral("/bin/sh"), {}, {}, {}, {}}), nullptr);
}

} // namespace brindle::test
