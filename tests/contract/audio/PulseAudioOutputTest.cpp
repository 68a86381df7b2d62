#include "platform/linux/audio/PulseAudioOutput.h"

#include "contract/audio/SoundServer.h"
#include "support/EventLoop.h"

#include <QLocalServer>
#include <QLocalSocket>

#include <gmock/gmock.h>

namespace brindle::test {

namespace {

using namespace Qt::StringLiterals;

/// Time in which nobody waits longer than a turn, but for the record.
class HastyScheduler : public SystemScheduler
{
public:
    Delay after(double seconds, std::function<void()> work) override
    {
        if (seconds > 0)
            pauses.append(seconds);
        return SystemScheduler::after(0, std::move(work));
    }

    QList<double> pauses;
};

bool comesTo(const AudioOutput &output, std::optional<OutputLevel> level)
{
    return eventually([&output, level] { return output.level() == level; });
}

class PulseAudioOutputTest : public testing::Test
{
protected:
    PulseAudioServer server;
};

} // namespace

TEST_F(PulseAudioOutputTest, AServerWithoutAnOutputLeavesNothingKnown)
{
    const Subscription subscription = server.port().notify([] { });
    ASSERT_TRUE(server.startServer());
    server.add(u"only"_s);
    ASSERT_TRUE(comesTo(server.port(), {{0.5, false}}));
    server.remove(u"only"_s);
    EXPECT_TRUE(comesTo(server.port(), std::nullopt));
    server.add(u"only"_s);
    EXPECT_TRUE(comesTo(server.port(), {{0.5, false}}));
}

TEST_F(PulseAudioOutputTest, ManyChangesLeaveTheLastOne)
{
    int changes = 0;
    const Subscription subscription = server.port().notify([&changes] { ++changes; });
    server.comeUp();
    for (int percent = 1; percent <= 40; ++percent)
        server.setVolume(u"front"_s, {double(percent)});
    EXPECT_TRUE(comesTo(server.port(), {{0.4, false}}));
    EXPECT_LE(changes, 42);
}

TEST_F(PulseAudioOutputTest, NothingIsListenedToUnlessSomebodyCares)
{
    server.comeUp();
    EXPECT_FALSE(server.output().isListening());
    {
        const Subscription one = server.port().notify([] { });
        const Subscription another = server.port().notify([] { });
        EXPECT_TRUE(comesTo(server.port(), {{0.5, false}}));
    }
    EXPECT_FALSE(server.output().isListening());
    EXPECT_FALSE(server.control({u"list"_s, u"short"_s, u"clients"_s}).contains(u"Velmora"_s));
}

TEST_F(PulseAudioOutputTest, ASubscriptionMayOutliveThePort)
{
    Subscription subscription;
    {
        SystemScheduler time;
        PulseAudioOutput shortLived{time};
        subscription = shortLived.notify([] { FAIL(); });
    }
    subscription.reset();
    EXPECT_FALSE(subscription);
}

TEST_F(PulseAudioOutputTest, AnObserverMayEndItsOwnSubscription)
{
    int told = 0;
    Subscription subscription;
    subscription = server.port().notify([&] {
        ++told;
        subscription.reset();
    });
    server.comeUp();
    EXPECT_TRUE(eventually([&told] { return told == 1; }));
    EXPECT_FALSE(server.output().isListening());
}

TEST_F(PulseAudioOutputTest, ReadersAreServedForAWhileAfterTheLastReading)
{
    server.comeUp();
    HastyScheduler time;
    const PulseAudioOutput output{time};
    output.level();
    EXPECT_TRUE(output.isListening());
    EXPECT_TRUE(eventually([&output] { return !output.isListening(); }));
    EXPECT_EQ(time.pauses, QList<double>{PulseAudioOutput::lingering});
}

TEST_F(PulseAudioOutputTest, AServerThatIsMissingIsLookedForLessAndLessOften)
{
    HastyScheduler time;
    PulseAudioOutput output{time};
    const Subscription subscription = output.notify([] { });
    EXPECT_TRUE(eventually([&time] { return time.pauses.size() >= 6; }));
    EXPECT_THAT(time.pauses.first(6), testing::ElementsAre(0.5, 2, 8, 32, 120, 120));
}

TEST_F(PulseAudioOutputTest, AServerThatWasReachedIsLookedForSoonWhenItGoes)
{
    HastyScheduler time;
    PulseAudioOutput output{time};
    const Subscription subscription = output.notify([] { });
    server.comeUp();
    ASSERT_TRUE(comesTo(output, {{0.5, false}}));
    time.pauses.clear();
    server.goDown();
    EXPECT_TRUE(eventually([&time] { return time.pauses.size() >= 2; }));
    EXPECT_THAT(time.pauses.first(2), testing::ElementsAre(0.5, 2));
}

TEST_F(PulseAudioOutputTest, AServerThatNeverAnswersHoldsNothingUp)
{
    QLocalServer deaf;
    ASSERT_TRUE(deaf.listen(server.socket()));
    const Subscription subscription = server.port().notify([] { FAIL(); });
    EXPECT_TRUE(eventually([&deaf] { return deaf.hasPendingConnections(); }));
    deliverEvents();
    EXPECT_EQ(server.port().level(), std::nullopt);
    EXPECT_TRUE(server.output().isListening());
}

TEST_F(PulseAudioOutputTest, AServerThatSpeaksNonsenseIsNoServer)
{
    QLocalServer liar;
    ASSERT_TRUE(liar.listen(server.socket()));
    HastyScheduler time;
    PulseAudioOutput output{time};
    const Subscription subscription = output.notify([] { FAIL(); });
    int visits = 0;
    EXPECT_TRUE(eventually([&] {
        while (auto *client = liar.nextPendingConnection()) {
            ++visits;
            client->write(QByteArray(4096, '\xff'));
            client->flush();
        }
        return visits >= 3;
    }));
    EXPECT_GE(time.pauses.size(), 2);
    EXPECT_EQ(output.level(), std::nullopt);
}

} // namespace brindle::test
