#include "contract/brightness/BrightnessWorld.h"
#include "support/EventLoop.h"

#include <gmock/gmock.h>

namespace brindle::test {

using namespace Qt::StringLiterals;

class SysfsBrightnessTest : public testing::Test
{
protected:
    void listen()
    {
        subscription = world.port().notify([this] { ++changes; });
    }
    bool comesTo(std::optional<double> brightness)
    {
        return eventually([this, brightness] { return world.port().brightness() == brightness; });
    }

    BacklightFolder world;
    int changes = 0;
    Subscription subscription;
};

TEST_F(SysfsBrightnessTest, AReadingOpensNoFileWhileSomebodyIsRegistered)
{
    world.setBrightness(25);
    listen();
    world.write(u"display"_s, "brightness", "100");
    ASSERT_TRUE(comesTo(0.25));
    // Whatever the files say by now: news of it has not been delivered.
    world.write(u"display"_s, "brightness", "200");
    EXPECT_EQ(world.port().brightness(), 0.25);
    EXPECT_TRUE(comesTo(0.5));
}

TEST_F(SysfsBrightnessTest, NothingIsWatchedUnlessSomebodyIsRegistered)
{
    world.setBrightness(25);
    EXPECT_FALSE(world.output().isWatching());
    listen();
    EXPECT_TRUE(world.output().isWatching());
    world.setBrightness(50);
    subscription.reset();
    EXPECT_FALSE(world.output().isWatching());
    deliverEvents();
    EXPECT_EQ(changes, 0);
}

TEST_F(SysfsBrightnessTest, TheFirmwareGoesBeforeThePlatformAndThatBeforeTheBareRegisters)
{
    world.addDevice(u"a"_s, "raw", "100", "10");
    EXPECT_EQ(world.port().brightness(), 0.1);
    world.addDevice(u"b"_s, "platform", "100", "20");
    EXPECT_EQ(world.port().brightness(), 0.2);
    world.addDevice(u"c"_s, "firmware", "100", "30");
    EXPECT_EQ(world.port().brightness(), 0.3);
    world.addDevice(u"bb"_s, "firmware", "100", "40");
    EXPECT_EQ(world.port().brightness(), 0.4);
}

TEST_F(SysfsBrightnessTest, ADeviceThatSaysNothingSensibleIsPassedOver)
{
    world.addDevice(u"a"_s, "firmware", "0", "5");
    world.addDevice(u"b"_s, "firmware", "-5", "1");
    world.addDevice(u"c"_s, "firmware", "full", "5");
    world.addDevice(u"d"_s, "firmware", "100", "");
    world.addDevice(u"e"_s, "firmware", "100", "-3");
    world.addDevice(u"f"_s, "firmware", "100", QByteArray(100000, '9'));
    QDir().mkdir(world.fileOf(u"g"_s));
    EXPECT_EQ(world.port().brightness(), std::nullopt);
    world.addDevice(u"h"_s, "", "100", "35");
    EXPECT_EQ(world.port().brightness(), 0.35);
}

TEST_F(SysfsBrightnessTest, BrighterThanFullIsFull)
{
    world.addDevice(u"a"_s, "raw", "100", "250");
    EXPECT_EQ(world.port().brightness(), 1);
}

TEST_F(SysfsBrightnessTest, AnotherDeviceTakesOverFromOneThatGoes)
{
    world.addDevice(u"a"_s, "firmware", "100", "30");
    world.addDevice(u"b"_s, "raw", "200", "20");
    listen();
    world.removeDevice(u"a"_s);
    EXPECT_TRUE(comesTo(0.1));
    world.write(u"b"_s, "brightness", "60");
    EXPECT_TRUE(comesTo(0.3));
}

TEST_F(SysfsBrightnessTest, AMachineWithoutTheClassIsSilent)
{
    SystemScheduler time;
    SysfsBrightness nowhere{time, u"/nowhere/at/all"_s};
    const Subscription nobody = nowhere.notify([] { FAIL(); });
    EXPECT_TRUE(nobody);
    deliverEvents();
    EXPECT_EQ(nowhere.brightness(), std::nullopt);
}

TEST_F(SysfsBrightnessTest, AListenerMayEndItsOwnRegistration)
{
    world.setBrightness(25);
    int told = 0;
    subscription = world.port().notify([&] {
        ++told;
        subscription.reset();
    });
    world.setBrightness(30);
    EXPECT_TRUE(eventually([&told] { return told > 0; }));
    EXPECT_FALSE(world.output().isWatching());
}

} // namespace brindle::test
