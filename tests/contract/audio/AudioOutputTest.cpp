#include "contract/audio/AudioWorld.h"
#include "contract/audio/SoundServer.h"
#include "support/EventLoop.h"

#include <gmock/gmock.h>

namespace brindle::test {

using namespace Qt::StringLiterals;

/// What the port promises, whoever keeps it.
template <typename World> class AudioOutputContract : public testing::Test
{
protected:
    void listen()
    {
        subscription = world.port().notify([this] { ++changes; });
    }
    void listenToServer()
    {
        listen();
        world.comeUp();
        ASSERT_TRUE(comesTo({{0.5, false}}));
        changes = 0;
    }
    bool comesTo(std::optional<OutputLevel> level)
    {
        return eventually([this, level] { return world.port().level() == level; });
    }
    /// What was told of it, once it has come to `level`.
    int changesUntil(OutputLevel level)
    {
        EXPECT_TRUE(comesTo(level));
        EXPECT_TRUE(eventually([this] { return changes > 0; }));
        return changes;
    }

    World world;
    int changes = 0;
    Subscription subscription;
};

using Worlds = testing::Types<FakeAudioWorld, PulseAudioServer, PipeWireServer>;
TYPED_TEST_SUITE(AudioOutputContract, Worlds);

TYPED_TEST(AudioOutputContract, NothingIsKnownWithoutAServer)
{
    this->listen();
    deliverEvents();
    EXPECT_FALSE(this->world.port().level());
    EXPECT_EQ(this->changes, 0);
}

TYPED_TEST(AudioOutputContract, TheFirstAnswerIsAChange)
{
    this->listen();
    this->world.comeUp();
    EXPECT_TRUE(this->comesTo({{0.5, false}}));
    EXPECT_TRUE(eventually([this] { return this->changes > 0; }));
}

TYPED_TEST(AudioOutputContract, AServerThatWasThereFirstIsRead)
{
    this->world.comeUp();
    this->listen();
    EXPECT_TRUE(this->comesTo({{0.5, false}}));
}

TYPED_TEST(AudioOutputContract, AReadingAloneIsFollowedByTheLevel)
{
    this->world.comeUp();
    EXPECT_TRUE(this->comesTo({{0.5, false}}));
    this->world.setVolume(u"front"_s, {20});
    EXPECT_TRUE(this->comesTo({{0.2, false}}));
}

TYPED_TEST(AudioOutputContract, AChangeIsTold)
{
    this->listenToServer();
    this->world.setVolume(u"front"_s, {75});
    EXPECT_EQ(this->changesUntil({0.75, false}), 1);
}

TYPED_TEST(AudioOutputContract, TheLevelIsTheOneThatMixersShow)
{
    this->listenToServer();
    for (const int percent : {0, 1, 33, 34, 66, 67, 99, 100}) {
        this->world.setVolume(u"front"_s, {double(percent)});
        EXPECT_TRUE(this->comesTo({{percent / 100.0, false}})) << percent;
    }
}

TYPED_TEST(AudioOutputContract, MutingAloneIsAChangeAndLeavesTheLevel)
{
    this->listenToServer();
    this->world.setMuted(u"front"_s, true);
    EXPECT_EQ(this->changesUntil({0.5, true}), 1);
    this->changes = 0;
    this->world.setMuted(u"front"_s, false);
    EXPECT_EQ(this->changesUntil({0.5, false}), 1);
}

TYPED_TEST(AudioOutputContract, ChannelsThatDifferGiveTheirMean)
{
    this->listenToServer();
    this->world.setVolume(u"front"_s, {20, 60});
    EXPECT_TRUE(this->comesTo({{0.4, false}}));
}

TYPED_TEST(AudioOutputContract, LouderThanFullIsFull)
{
    this->listenToServer();
    this->world.setVolume(u"front"_s, {150});
    EXPECT_TRUE(this->comesTo({{1, false}}));
    // Each channel by itself: one that is too loud makes up for none that is not.
    this->world.setVolume(u"front"_s, {150, 50});
    EXPECT_TRUE(this->comesTo({{0.75, false}}));
}

TYPED_TEST(AudioOutputContract, WhatHappensToAnotherOutputIsNoChange)
{
    this->listenToServer();
    this->world.setVolume(u"back"_s, {10});
    this->world.setMuted(u"back"_s, true);
    this->world.setVolume(u"front"_s, {60});
    EXPECT_EQ(this->changesUntil({0.6, false}), 1);
}

TYPED_TEST(AudioOutputContract, AnotherDefaultOutputIsFollowed)
{
    this->listenToServer();
    this->world.setVolume(u"back"_s, {10});
    this->world.makeDefault(u"back"_s);
    EXPECT_TRUE(this->comesTo({{0.1, false}}));
    this->world.setVolume(u"back"_s, {15});
    EXPECT_TRUE(this->comesTo({{0.15, false}}));
}

TYPED_TEST(AudioOutputContract, AnOutputThatVanishesGivesWayToTheNext)
{
    this->listenToServer();
    this->world.setVolume(u"back"_s, {25});
    this->world.remove(u"front"_s);
    EXPECT_TRUE(this->comesTo({{0.25, false}}));
    this->world.setVolume(u"back"_s, {30});
    EXPECT_TRUE(this->comesTo({{0.3, false}}));
}

TYPED_TEST(AudioOutputContract, NothingIsKnownWhenTheServerIsGone)
{
    this->listenToServer();
    this->world.goDown();
    EXPECT_TRUE(this->comesTo(std::nullopt));
    EXPECT_TRUE(eventually([this] { return this->changes == 1; }));
}

TYPED_TEST(AudioOutputContract, AServerThatReturnsIsFollowedAgain)
{
    this->listenToServer();
    this->world.goDown();
    ASSERT_TRUE(this->comesTo(std::nullopt));
    this->world.comeUp();
    EXPECT_TRUE(this->comesTo({{0.5, false}}));
    this->world.setVolume(u"front"_s, {35});
    EXPECT_TRUE(this->comesTo({{0.35, false}}));
}

TYPED_TEST(AudioOutputContract, AnEndedSubscriptionHearsNothing)
{
    this->listenToServer();
    int others = 0;
    const Subscription other = this->world.port().notify([&others] { ++others; });
    this->subscription.reset();
    this->world.setVolume(u"front"_s, {75});
    EXPECT_TRUE(eventually([&others] { return others == 1; }));
    EXPECT_EQ(this->changes, 0);
}

} // namespace brindle::test
