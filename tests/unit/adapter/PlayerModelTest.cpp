#include "adapter/linux/PlayerModel.h"

#include <gmock/gmock.h>

namespace brindle::adapter {
namespace {

using namespace Qt::StringLiterals;

const Date start = Date::fromSecondsSince1970(1000);

QVariantMap titled(const QString &title)
{
    return {{u"xesam:title"_s, title}};
}

QVariantMap playing(const QString &title, qlonglong position)
{
    return {{u"PlaybackStatus"_s, u"Playing"_s}, {u"Metadata"_s, titled(title)}, {u"Position"_s, position}};
}

class PlayerModelTest : public testing::Test
{
protected:
    Turns turns;
    PlayerModel player{turns, PlayHistory::Arrival::came};
};

TEST_F(PlayerModelTest, IsUnknownUntilItSaysWhetherItPlays)
{
    EXPECT_FALSE(player.isKnown());
    player.changed({{u"Metadata"_s, titled(u"Song"_s)}}, start);
    EXPECT_FALSE(player.isKnown());
    player.changed({{u"PlaybackStatus"_s, u"Playing"_s}}, start);
    EXPECT_TRUE(player.isKnown());
}

TEST_F(PlayerModelTest, AnAnswerIsThePlayersWholeState)
{
    player.answered(playing(u"Song"_s, 3'000'000), start);
    EXPECT_TRUE(player.state().isPlaying());
    EXPECT_EQ(player.state().track.title, u"Song");
    EXPECT_EQ(player.position().anchor()->elapsed, 3);
    player.answered({}, start);
    EXPECT_FALSE(player.state().isPlaying());
    EXPECT_EQ(player.state().track, Track());
    EXPECT_FALSE(player.position().anchor());
}

TEST_F(PlayerModelTest, AChangeLeavesTheRestAsItWas)
{
    player.answered(playing(u"Song"_s, 3'000'000), start);
    player.changed({{u"PlaybackStatus"_s, u"Paused"_s}}, start + 1);
    EXPECT_EQ(player.state().track.title, u"Song");
    EXPECT_EQ(player.state().status, PlaybackStatus::paused);
    EXPECT_EQ(player.position().anchor()->elapsed, 4);
}

TEST_F(PlayerModelTest, AnotherTrackBeginsAtItsStart)
{
    player.answered(playing(u"Song"_s, 3'000'000), start);
    player.changed({{u"Metadata"_s, titled(u"Other"_s)}}, start + 1);
    EXPECT_EQ(player.position().anchor()->elapsed, 0);
    EXPECT_EQ(player.position().anchor()->at, start + 1);
}

TEST_F(PlayerModelTest, TheSameTrackToldAgainGoesOn)
{
    player.answered(playing(u"Song"_s, 3'000'000), start);
    const int course = player.position().course();
    player.changed({{u"Metadata"_s, titled(u"Song"_s)}, {u"Volume"_s, 0.5}}, start + 1);
    EXPECT_EQ(player.position().course(), course);
}

TEST_F(PlayerModelTest, ATitleIsGoneOnlyWhenTheAnswerSaysSo)
{
    player.answered(playing(u"Song"_s, 3'000'000), start);
    const int course = player.position().course();
    player.changed({{u"Metadata"_s, QVariantMap{{u"xesam:album"_s, u"Album"_s}}}}, start + 1);
    EXPECT_EQ(player.state().track.title, u"Song");
    EXPECT_EQ(player.position().course(), course);
    player.answered({{u"PlaybackStatus"_s, u"Stopped"_s}}, start + 2);
    EXPECT_EQ(player.state().track.title, QString());
}

TEST_F(PlayerModelTest, APositionThatComesUnaskedIsTaken)
{
    player.answered(playing(u"Song"_s, 3'000'000), start);
    player.changed({{u"Position"_s, 9'000'000LL}}, start);
    EXPECT_EQ(player.position().anchor()->elapsed, 9);
}

TEST_F(PlayerModelTest, AJumpIsTaken)
{
    player.answered(playing(u"Song"_s, 3'000'000), start);
    player.jumped(42, start + 1);
    EXPECT_EQ(player.position().anchor()->elapsed, 42);
}

TEST_F(PlayerModelTest, ThePositionRunsWithTheRateOnlyWhileItPlays)
{
    QVariantMap properties = playing(u"Song"_s, 3'000'000);
    properties.insert(u"Rate"_s, 2.0);
    player.answered(properties, start);
    player.changed({{u"PlaybackStatus"_s, u"Paused"_s}}, start + 2);
    EXPECT_EQ(player.position().anchor()->elapsed, 7);
}

TEST_F(PlayerModelTest, IsACandidateAsItStands)
{
    player.answered(playing(u"Song"_s, 0), start);
    Candidate candidate = player.candidate();
    EXPECT_EQ(candidate.status, PlaybackStatus::playing);
    EXPECT_TRUE(candidate.hasTitle);
    EXPECT_GT(candidate.began, candidate.appeared);
    player.answered({}, start);
    candidate = player.candidate();
    EXPECT_EQ(candidate.status, PlaybackStatus::stopped);
    EXPECT_FALSE(candidate.hasTitle);
    EXPECT_GT(candidate.ended, candidate.began);
}

} // namespace
} // namespace brindle::adapter
