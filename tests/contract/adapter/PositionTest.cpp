#include "contract/adapter/AdapterStream.h"
#include "contract/adapter/ScriptedPlayer.h"
#include "support/dbus/PrivateBus.h"

#include <QDateTime>

#include <gmock/gmock.h>

namespace brindle::test {
namespace {

using namespace Qt::StringLiterals;

double secondsSince1970()
{
    return double(QDateTime::currentMSecsSinceEpoch()) / 1000;
}

class AdapterPosition : public testing::Test
{
protected:
    AdapterPosition()
    {
        player.play(u"Song"_s);
        player.setPosition(40);
        player.appear();
        stream.waitForTitle(u"Song"_s);
    }

    double elapsed() const { return stream.number(u"elapsedTime"_s); }
    /// The position now, as the reader computes it.
    double extrapolated() const
    {
        return elapsed() + stream.number(u"playbackRate"_s) * (secondsSince1970() - stream.timestamp());
    }
    /// The same, as the player has it.
    double real() const { return secondsSince1970() - m_began + 40; }

    PrivateBus bus;
    ScriptedPlayer player{bus, u"music"_s};
    AdapterStream stream{bus};

private:
    const double m_began = secondsSince1970();
};

TEST_F(AdapterPosition, WasTrueAtItsTimestamp)
{
    EXPECT_NEAR(extrapolated(), real(), 2);
}

TEST_F(AdapterPosition, AJumpIsToldWithItsMoment)
{
    const double before = secondsSince1970();
    player.jump(100);
    ASSERT_TRUE(stream.waitFor([this] { return elapsed() == 100; }));
    EXPECT_GE(stream.timestamp(), before - 0.001);
    EXPECT_LE(stream.timestamp(), secondsSince1970());
}

TEST_F(AdapterPosition, AJumpOfAPausedPlayerIsTold)
{
    player.setStatus(u"Paused"_s);
    ASSERT_TRUE(stream.waitFor([this] { return !stream.isPlaying(); }));
    player.jump(7);
    EXPECT_TRUE(stream.waitFor([this] { return elapsed() == 7; }));
}

TEST_F(AdapterPosition, APauseHoldsItWhereItIs)
{
    player.setStatus(u"Paused"_s);
    ASSERT_TRUE(stream.waitFor([this] { return !stream.isPlaying(); }));
    EXPECT_EQ(stream.number(u"playbackRate"_s), 0);
    EXPECT_GE(elapsed(), 40);
    EXPECT_LE(elapsed(), real());
}

TEST_F(AdapterPosition, AnotherSpeedIsToldWithThePosition)
{
    const auto before = stream.text(u"timestamp"_s);
    player.change({{u"Rate"_s, 2.0}});
    ASSERT_TRUE(stream.waitFor([this] { return stream.number(u"playbackRate"_s) == 2; }));
    EXPECT_NE(stream.text(u"timestamp"_s), before);
    EXPECT_GE(elapsed(), 40);
    EXPECT_LE(elapsed(), real());
}

TEST_F(AdapterPosition, APlayerThatDoesNotTellOfItsJumpIsFoundOutWhenItTellsSomethingElse)
{
    player.setPosition(150);
    player.tell({{u"Volume"_s, 0.5}});
    EXPECT_TRUE(stream.waitFor([this] { return elapsed() >= 150; }));
}

TEST_F(AdapterPosition, APlayerThatHasNotGotUnderWayIsAskedOnceMore)
{
    player.play(u"Other"_s);
    ASSERT_TRUE(stream.waitForTitle(u"Other"_s));
    // Some time passes until its first sound.
    player.setPosition(-0.9);
    const double firstSound = secondsSince1970() + 0.9;
    const auto lines = stream.lines.size();
    ASSERT_TRUE(stream.waitFor([&] { return stream.lines.size() > lines; }));
    EXPECT_NEAR(stream.timestamp() - elapsed(), firstSound, 0.4);
}

TEST_F(AdapterPosition, APlayerWithoutOneHasNone)
{
    player.properties.insert(u"Position"_s, u"nowhere"_s);
    player.play(u"Radio"_s);
    ASSERT_TRUE(stream.waitForTitle(u"Radio"_s));
    EXPECT_FALSE(stream.state().fields.contains(u"elapsedTime"_s));
    EXPECT_FALSE(stream.state().fields.contains(u"timestamp"_s));
}

TEST_F(AdapterPosition, APlayerIsAskedAfterItWasTold)
{
    player.setPosition(0);
    ASSERT_EQ(runAdapter(bus, {u"seek"_s, u"90000000"_s}), 0);
    EXPECT_EQ(player.commands.size(), 1);
    // It jumps, and says nothing.
    player.setPosition(90);
    ASSERT_EQ(runAdapter(bus, {u"send"_s, u"0"_s}), 0);
    EXPECT_TRUE(stream.waitFor([this] { return elapsed() >= 90; }));
}

} // namespace
} // namespace brindle::test
