#include "foundation/Poll.h"

#include "foundation/ManualScheduler.h"

#include <gmock/gmock.h>
#include <random>

namespace brindle {
namespace {

using testing::ElementsAre;

constexpr Poll::Rhythm rhythm{0.25, 0};

/// A value that others change, read by a poll; and everything that can be seen of the readings.
class Observed
{
public:
    struct Sight
    {
        double uptime;
        int value;

        bool operator==(const Sight &) const = default;
        friend void PrintTo(const Sight &sight, std::ostream *stream)
        {
            *stream << sight.value << " at " << sight.uptime;
        }
    };

    explicit Observed(bool announces)
    {
        Poll::Announcements announcements;
        if (announces) {
            announcements = [this](std::function<void()> changed) {
                m_changed = std::move(changed);
                return Subscription{[this] { m_changed = nullptr; }};
            };
        }
        poll.emplace(time, rhythm, [this] { return read(); }, announcements);
    }

    void change(int value)
    {
        m_value = value;
        announce();
    }
    void announce()
    {
        if (m_changed)
            m_changed();
    }
    bool isAnnounced() const { return bool(m_changed); }

    ManualScheduler time;
    std::vector<Sight> seen;
    std::vector<double> readings;
    std::optional<Poll> poll;

private:
    bool read()
    {
        readings.push_back(time.uptime());
        if (std::exchange(m_lastRead, m_value) == m_value)
            return false;
        seen.push_back({time.uptime(), m_value});
        return true;
    }

    int m_value = 0;
    int m_lastRead = 0;
    std::function<void()> m_changed;
};

TEST(Poll, AnObserverCannotTellARestingPollFromOneThatAlwaysTicks)
{
    std::mt19937 random(4711);
    // Bursts of changes, some of them undone before they are read, and long quiet times.
    std::exponential_distribution<double> shortPause(10);
    std::exponential_distribution<double> longPause(0.05);
    Observed always(false);
    Observed resting(true);
    for (int step = 0; step < 2000; ++step) {
        const double pause = random() % 10 == 0 ? longPause(random) : shortPause(random);
        const int value = int(random() % 4);
        for (auto *observed : {&always, &resting}) {
            observed->time.advance(pause);
            observed->change(value);
        }
    }
    ASSERT_EQ(always.seen.size(), resting.seen.size());
    for (std::size_t index = 0; index < always.seen.size(); ++index) {
        EXPECT_EQ(always.seen[index].value, resting.seen[index].value);
        EXPECT_NEAR(always.seen[index].uptime, resting.seen[index].uptime, 1e-6);
    }
    EXPECT_LT(resting.time.wakeUps(), always.time.wakeUps() / 4);
}

TEST(Poll, WithAnnouncementsNothingRunsWhileNothingChanges)
{
    Observed observed(true);
    observed.time.advance(3600);
    EXPECT_TRUE(observed.poll->isResting());
    EXPECT_EQ(observed.time.pendingCount(), 0);
    EXPECT_EQ(observed.time.wakeUps(), 1U);
}

TEST(Poll, WithoutAnnouncementsTheReadingIsTakenAlways)
{
    Observed observed(false);
    observed.time.advance(3600);
    EXPECT_FALSE(observed.poll->isResting());
    EXPECT_EQ(observed.readings.size(), 14400U);
}

TEST(Poll, APortThatRefusesAnnouncementsIsReadAlways)
{
    ManualScheduler time;
    int readings = 0;
    const Poll poll(
        time, rhythm,
        [&] {
            ++readings;
            return false;
        },
        [](const std::function<void()> &) { return Subscription(); });
    time.advance(10);
    EXPECT_EQ(readings, 40);
}

TEST(Poll, AChangeIsSeenAtTheNextMomentOfTheRhythm)
{
    Observed observed(true);
    observed.time.advance(10.1);
    observed.change(1);
    EXPECT_TRUE(observed.seen.empty());
    observed.time.advance(1);
    EXPECT_THAT(observed.seen, ElementsAre(Observed::Sight{10.25, 1}));
}

TEST(Poll, AfterAChangeTheReadingGoesOnUntilItFindsNothingNew)
{
    Observed observed(true);
    observed.time.advance(10.1);
    observed.readings.clear();
    observed.change(1);
    observed.time.advance(1);
    EXPECT_THAT(observed.readings, ElementsAre(10.25, 10.5));
    EXPECT_TRUE(observed.poll->isResting());
}

TEST(Poll, ManyAnnouncementsMakeNoReadingMore)
{
    Observed observed(true);
    observed.time.advance(10.1);
    observed.readings.clear();
    for (int count = 0; count < 100; ++count)
        observed.announce();
    observed.time.advance(1);
    EXPECT_THAT(observed.readings, ElementsAre(10.25));
}

TEST(Poll, EndsWithItsOwner)
{
    Observed observed(true);
    EXPECT_TRUE(observed.isAnnounced());
    observed.poll.reset();
    EXPECT_FALSE(observed.isAnnounced());
    EXPECT_EQ(observed.time.pendingCount(), 0);
}

TEST(Poll, MayBeEndedByItsOwnReading)
{
    ManualScheduler time;
    int readings = 0;
    std::optional<Poll> poll;
    const auto capture = std::make_shared<int>();
    poll.emplace(time, rhythm, [&readings, &poll, capture] {
        ++readings;
        poll.reset();
        return ++*capture > 0;
    });
    time.advance(10);
    EXPECT_EQ(readings, 1);
    EXPECT_EQ(capture.use_count(), 1);
}

} // namespace
} // namespace brindle
