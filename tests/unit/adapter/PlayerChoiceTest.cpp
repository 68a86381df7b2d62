#include "adapter/linux/PlayerChoice.h"

#include <gmock/gmock.h>

namespace brindle::adapter {
namespace {

using namespace Qt::StringLiterals;
using enum PlaybackStatus;
using enum PlayHistory::Arrival;

/// Some players and what they do, in the order in which they do it.
class PlayerChoice : public testing::Test
{
protected:
    struct Entry
    {
        QString name;
        PlayHistory history;
        PlaybackStatus status;
        Track track;
    };

    void appears(const QString &name, PlaybackStatus status, PlayHistory::Arrival arrival = came)
    {
        m_players.append({name, PlayHistory(m_turns, arrival), status, titled(u"of "_s + name)});
        m_players.last().history.observe(status, m_players.last().track, now);
    }
    void says(const QString &name, PlaybackStatus status)
    {
        Entry &player = find(name);
        player.status = status;
        player.history.observe(status, player.track, now);
    }
    void loads(const QString &name, const QString &title)
    {
        find(name).track = titled(title);
        says(name, find(name).status);
    }
    void quits(const QString &name)
    {
        m_players.removeIf([&name](const Entry &player) { return player.name == name; });
    }

    QString chosen() const
    {
        QList<Candidate> candidates;
        for (const Entry &player : m_players) {
            candidates.append({player.status, !player.track.title.isEmpty(), player.history.appeared(),
                player.history.began(), player.history.ended()});
        }
        const auto index = choose(candidates);
        return index ? m_players.at(*index).name : QString();
    }

    Date now = Date::fromSecondsSince1970(1000);

private:
    static Track titled(const QString &title)
    {
        Track track;
        track.title = title;
        return track;
    }
    Entry &find(const QString &name)
    {
        return *std::find_if(
            m_players.begin(), m_players.end(), [&name](const Entry &player) { return player.name == name; });
    }

    Turns m_turns;
    QList<Entry> m_players;
};

TEST_F(PlayerChoice, WithoutPlayersThereIsNone)
{
    EXPECT_EQ(chosen(), QString());
}

TEST_F(PlayerChoice, OneThatPlaysGoesBeforeOneThatDoesNot)
{
    appears(u"playing"_s, playing);
    appears(u"paused"_s, paused);
    appears(u"stopped"_s, stopped);
    EXPECT_EQ(chosen(), u"playing");
}

TEST_F(PlayerChoice, OfThoseThatPlayTheOneThatBeganLastIsFollowed)
{
    appears(u"first"_s, playing);
    appears(u"second"_s, playing);
    EXPECT_EQ(chosen(), u"second");
    says(u"first"_s, paused);
    says(u"first"_s, playing);
    EXPECT_EQ(chosen(), u"first");
}

TEST_F(PlayerChoice, OneThatOnlyGoesOnPlayingHasNotBegun)
{
    appears(u"first"_s, playing);
    appears(u"second"_s, playing);
    says(u"first"_s, playing);
    loads(u"first"_s, u"next track"_s);
    EXPECT_EQ(chosen(), u"second");
}

TEST_F(PlayerChoice, WhenTheFollowedOnePausesAnotherThatPlaysTakesOver)
{
    appears(u"first"_s, playing);
    appears(u"second"_s, playing);
    says(u"second"_s, paused);
    EXPECT_EQ(chosen(), u"first");
}

TEST_F(PlayerChoice, WhenNonePlaysTheOneThatPlayedLastIsFollowed)
{
    appears(u"first"_s, playing);
    appears(u"second"_s, playing);
    says(u"first"_s, paused);
    says(u"second"_s, paused);
    EXPECT_EQ(chosen(), u"second");
    says(u"first"_s, playing);
    says(u"first"_s, stopped);
    EXPECT_EQ(chosen(), u"first");
}

TEST_F(PlayerChoice, OneThatAppearsPausedTakesNobodysPlace)
{
    appears(u"playing"_s, playing);
    appears(u"newcomer"_s, paused);
    EXPECT_EQ(chosen(), u"playing");
    says(u"playing"_s, paused);
    EXPECT_EQ(chosen(), u"playing");
}

TEST_F(PlayerChoice, OneThatSaysItIsStoppedTakesNobodysPlace)
{
    appears(u"playing"_s, playing);
    appears(u"newcomer"_s, paused);
    says(u"newcomer"_s, stopped);
    EXPECT_EQ(chosen(), u"playing");
    says(u"playing"_s, paused);
    says(u"newcomer"_s, paused);
    says(u"newcomer"_s, stopped);
    EXPECT_EQ(chosen(), u"playing");
}

TEST_F(PlayerChoice, OneThatHasQuitIsGone)
{
    appears(u"first"_s, paused);
    appears(u"second"_s, playing);
    quits(u"second"_s);
    EXPECT_EQ(chosen(), u"first");
    quits(u"first"_s);
    EXPECT_EQ(chosen(), QString());
}

TEST_F(PlayerChoice, OfThoseThatNeverPlayedAPausedOneGoesFirstThenTheEarliest)
{
    appears(u"stopped"_s, stopped);
    appears(u"paused"_s, paused);
    appears(u"late"_s, paused);
    EXPECT_EQ(chosen(), u"paused");
}

TEST_F(PlayerChoice, AnIdlePlayerWithNothingToShowComesAfterOneThatShowsSomething)
{
    appears(u"paused"_s, paused);
    appears(u"emptied"_s, playing);
    says(u"emptied"_s, stopped);
    EXPECT_EQ(chosen(), u"emptied");
    loads(u"emptied"_s, QString());
    EXPECT_EQ(chosen(), u"paused");
}

TEST_F(PlayerChoice, OfThoseThatPlayedBeforeAnybodyLookedTheYoungestIsTakenToHaveBegunLast)
{
    appears(u"old"_s, playing, wasThere);
    appears(u"young"_s, playing, wasThere);
    EXPECT_EQ(chosen(), u"young");
}

TEST_F(PlayerChoice, OneThatWasPausedBeforeAnybodyLookedHasPlayedBefore)
{
    appears(u"was paused"_s, paused, wasThere);
    appears(u"newcomer"_s, paused);
    EXPECT_EQ(chosen(), u"was paused");
}

TEST_F(PlayerChoice, AGapBetweenTwoTracksIsNoNewBeginning)
{
    appears(u"album"_s, playing);
    appears(u"clip"_s, playing);
    says(u"album"_s, stopped);
    now = now + 0.2;
    loads(u"album"_s, u"next track"_s);
    says(u"album"_s, playing);
    EXPECT_EQ(chosen(), u"clip");
}

TEST_F(PlayerChoice, ALongGapOrTheSameTrackAgainIsANewBeginning)
{
    appears(u"album"_s, playing);
    appears(u"clip"_s, playing);
    says(u"album"_s, stopped);
    says(u"album"_s, playing);
    EXPECT_EQ(chosen(), u"album");
    says(u"clip"_s, paused);
    says(u"clip"_s, playing);
    says(u"album"_s, stopped);
    now = now + 1.1;
    loads(u"album"_s, u"next track"_s);
    says(u"album"_s, playing);
    EXPECT_EQ(chosen(), u"album");
}

} // namespace
} // namespace brindle::adapter
