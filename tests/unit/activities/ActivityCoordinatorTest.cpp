#include "activities/ActivityCoordinator.h"

#include "foundation/ManualScheduler.h"

#include <QSignalSpy>

#include <gmock/gmock.h>
#include <thread>

namespace brindle {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class Activities : public testing::Test
{
protected:
    SystemActivity activity(
        const QString &title, ActivityType type, ActivityPriority priority, double duration) const
    {
        return {QUuid::createUuid(), type, priority, time.now(), duration, {title, {}, {}, {}}};
    }
    SystemActivity charging(const QString &title = QStringLiteral("Charging"), double duration = 4) const
    {
        return activity(title, ActivityType::charging, ActivityPriority::charging, duration);
    }
    SystemActivity peripheral(const QString &title = QStringLiteral("Mouse"), double duration = 4) const
    {
        return activity(title, ActivityType::peripheral, ActivityPriority::peripheral, duration);
    }
    SystemActivity level(const QString &title = QStringLiteral("Sound")) const
    {
        return activity(title, ActivityType::systemControl, ActivityPriority::systemControl, 1.45);
    }

    QString shown() const { return coordinator.current() ? coordinator.current()->content.title : QString(); }
    QStringList waiting() const
    {
        QStringList titles;
        for (const auto &waits : coordinator.queue())
            titles.append(waits.content.title);
        return titles;
    }
    /// Ends `current`, whatever it is, by time alone.
    void endCurrent() { time.advance(coordinator.current()->effectiveDuration()); }

    ManualScheduler time;
    ActivityCoordinator coordinator{time};
};

TEST_F(Activities, AnActivityShowsAtOnceAndDisappearsAfterItsDuration)
{
    coordinator.post(charging());
    EXPECT_EQ(shown(), u"Charging");
    EXPECT_TRUE(coordinator.isExpiryPending());
    time.advance(3.999);
    EXPECT_EQ(shown(), u"Charging");
    time.advance(0.001);
    EXPECT_EQ(coordinator.current(), std::nullopt);
    EXPECT_FALSE(coordinator.isExpiryPending());
}

TEST_F(Activities, AnInterruptedEventComesBackForItsWholeDuration)
{
    coordinator.post(charging());
    time.advance(1);
    coordinator.post(peripheral(QStringLiteral("Mouse"), 3.5));
    EXPECT_EQ(shown(), u"Mouse");
    EXPECT_THAT(waiting(), ElementsAre(QStringLiteral("Charging")));
    time.advance(3.5);
    EXPECT_EQ(shown(), u"Charging");
    EXPECT_THAT(waiting(), IsEmpty());
    time.advance(3.9);
    EXPECT_EQ(shown(), u"Charging");
    time.advance(0.2);
    EXPECT_EQ(coordinator.current(), std::nullopt);
}

TEST_F(Activities, AnInterruptedEventKeepsTheMomentOfItsPosting)
{
    const SystemActivity first = charging();
    coordinator.post(first);
    time.advance(1);
    coordinator.post(peripheral());
    EXPECT_THAT(coordinator.queue(), ElementsAre(first));
    time.advance(4);
    EXPECT_EQ(coordinator.current(), first);
}

TEST_F(Activities, AnInterruptedEventOlderThanTwiceItsDurationDoesNotComeBack)
{
    coordinator.post(charging());
    time.advance(3.9);
    coordinator.post(peripheral(QStringLiteral("Mouse"), 4.2));
    time.advance(4.2);
    EXPECT_EQ(coordinator.current(), std::nullopt);
    EXPECT_THAT(waiting(), IsEmpty());
}

TEST_F(Activities, AnEventOfExactlyTwiceItsDurationIsNotStaleYet)
{
    coordinator.post(charging());
    time.advance(3.5);
    coordinator.post(peripheral(QStringLiteral("Mouse"), 4.5));
    time.advance(4.5);
    EXPECT_EQ(shown(), u"Charging");
}

TEST_F(Activities, ALowerEventWaitsForTheLevelDisplayToEnd)
{
    coordinator.post(level());
    time.advance(1);
    coordinator.post(charging());
    EXPECT_EQ(shown(), u"Sound");
    time.advance(0.449);
    EXPECT_EQ(shown(), u"Sound");
    time.advance(0.002);
    EXPECT_EQ(shown(), u"Charging");
}

TEST_F(Activities, AHeldLevelKeyLeavesOnlyItsLastLevelOnScreen)
{
    for (int press = 1; press <= 20; ++press) {
        coordinator.post(level(QString::number(press)));
        EXPECT_THAT(waiting(), IsEmpty());
        time.advance(0.1);
    }
    EXPECT_EQ(shown(), u"20");
    EXPECT_EQ(time.pendingCount(), 1);
    time.advance(1.34);
    EXPECT_EQ(shown(), u"20");
    time.advance(0.02);
    EXPECT_EQ(coordinator.current(), std::nullopt);
}

TEST_F(Activities, ALevelReplacesALevelWithoutTouchingTheDeviceThatWaits)
{
    coordinator.post(peripheral());
    coordinator.post(level(QStringLiteral("Sound")));
    EXPECT_EQ(shown(), u"Sound");
    coordinator.post(level(QStringLiteral("Display")));
    EXPECT_EQ(shown(), u"Display");
    EXPECT_THAT(waiting(), ElementsAre(QStringLiteral("Mouse")));
    endCurrent();
    EXPECT_EQ(shown(), u"Mouse");
}

TEST_F(Activities, ALevelAlsoReplacesLevelsThatWait)
{
    auto critical = activity(QStringLiteral("Alarm"), ActivityType::critical, ActivityPriority::critical, 1);
    coordinator.post(level(QStringLiteral("Sound")));
    coordinator.post(critical);
    coordinator.post(level(QStringLiteral("Display")));
    EXPECT_THAT(waiting(), ElementsAre(QStringLiteral("Sound"), QStringLiteral("Display")));
    endCurrent();
    EXPECT_EQ(shown(), u"Sound");
    coordinator.post(level(QStringLiteral("Louder")));
    EXPECT_EQ(shown(), u"Louder");
    EXPECT_THAT(waiting(), IsEmpty());
}

TEST_F(Activities, NewerEventOfTheSameRankTakesTheScreen)
{
    coordinator.post(peripheral(QStringLiteral("Older")));
    coordinator.post(peripheral(QStringLiteral("Newer")));
    EXPECT_EQ(shown(), u"Newer");
    endCurrent();
    EXPECT_EQ(shown(), u"Older");
}

TEST_F(Activities, ADurationOfNothingLastsATenthOfASecond)
{
    coordinator.post(charging(QStringLiteral("Charging"), 0));
    time.advance(0.099);
    EXPECT_EQ(shown(), u"Charging");
    time.advance(0.001);
    EXPECT_EQ(coordinator.current(), std::nullopt);
    EXPECT_EQ(charging(QString(), -5).effectiveDuration(), 0.1);
}

TEST_F(Activities, ADurationOfNothingGoesStaleAfterAFifthOfASecond)
{
    for (const auto &[wait, returns] : {std::pair(0.19, true), std::pair(0.21, false)}) {
        coordinator.post(peripheral(QStringLiteral("Mouse"), wait));
        coordinator.post(charging(QStringLiteral("Charging"), 0));
        time.advance(wait);
        EXPECT_EQ(shown() == u"Charging", returns) << wait;
        time.advance(1);
    }
}

TEST_F(Activities, AStaleEventIsRemovedOnlyWhenTheScreenIsFree)
{
    coordinator.post(peripheral(QStringLiteral("Mouse"), 10));
    coordinator.post(charging(QStringLiteral("Charging"), 1));
    time.advance(9);
    EXPECT_THAT(waiting(), ElementsAre(QStringLiteral("Charging")));
    time.advance(1);
    EXPECT_EQ(coordinator.current(), std::nullopt);
    EXPECT_THAT(waiting(), IsEmpty());
}

TEST_F(Activities, AllThatWaitIsGoneWhenAllOfItIsStale)
{
    coordinator.post(level());
    for (int number = 0; number < 5; ++number)
        coordinator.post(charging(QString::number(number), 0.5));
    EXPECT_EQ(coordinator.queue().size(), 5);
    endCurrent();
    EXPECT_EQ(coordinator.current(), std::nullopt);
    EXPECT_THAT(waiting(), IsEmpty());
}

TEST_F(Activities, TheHighestRankGoesFirstAndAmongEqualsTheLongestWait)
{
    coordinator.post(level());
    coordinator.post(charging(QStringLiteral("c1")));
    coordinator.post(peripheral(QStringLiteral("p1")));
    coordinator.post(charging(QStringLiteral("c2")));
    coordinator.post(peripheral(QStringLiteral("p2")));
    EXPECT_THAT(waiting(),
        ElementsAre(QStringLiteral("p1"), QStringLiteral("p2"), QStringLiteral("c1"), QStringLiteral("c2")));
}

TEST_F(Activities, AnInterruptedEventStandsBehindThoseOfItsRankThatWaitedAlready)
{
    coordinator.post(level());
    coordinator.post(peripheral(QStringLiteral("p1"), 10));
    coordinator.post(peripheral(QStringLiteral("p2"), 10));
    endCurrent();
    EXPECT_EQ(shown(), u"p1");
    coordinator.post(level());
    endCurrent();
    EXPECT_EQ(shown(), u"p2");
}

TEST_F(Activities, APostFromAnotherThreadArrivesOneTurnLater)
{
    std::thread([this, posted = charging()] { coordinator.post(posted); }).join();
    EXPECT_EQ(coordinator.current(), std::nullopt);
    time.runPosted();
    EXPECT_EQ(shown(), u"Charging");
}

TEST_F(Activities, APostFromAnotherThreadFindsACoordinatorThatIsGone)
{
    auto gone = std::make_unique<ActivityCoordinator>(time);
    std::thread([&gone, posted = charging()] { gone->post(posted); }).join();
    gone.reset();
    time.runPosted();
    EXPECT_EQ(time.pendingCount(), 0);
}

TEST_F(Activities, NoEndIsPendingOnceTheCoordinatorIsGone)
{
    {
        ActivityCoordinator brief{time};
        brief.post(charging());
        EXPECT_EQ(time.pendingCount(), 1);
    }
    EXPECT_EQ(time.pendingCount(), 0);
    time.advance(10);
}

TEST_F(Activities, ObserversSeeAnEmptyScreenBetweenTwoEvents)
{
    QStringList seen;
    QObject::connect(&coordinator, &ActivityCoordinator::currentChanged, [&] { seen.append(shown()); });
    coordinator.post(charging());
    coordinator.post(peripheral());
    endCurrent();
    EXPECT_THAT(seen,
        ElementsAre(
            QStringLiteral("Charging"), QStringLiteral("Mouse"), QString(), QStringLiteral("Charging")));
}

TEST_F(Activities, AnObserverThatPostsWhileTheScreenIsEmptyLosesNothing)
{
    bool once = false;
    QObject::connect(&coordinator, &ActivityCoordinator::currentChanged, [&] {
        if (!coordinator.current() && !std::exchange(once, true))
            coordinator.post(peripheral(QStringLiteral("Posted")));
    });
    coordinator.post(peripheral(QStringLiteral("Waits")));
    coordinator.post(peripheral(QStringLiteral("Shown")));
    endCurrent();
    EXPECT_EQ(shown(), u"Posted");
    endCurrent();
    EXPECT_EQ(shown(), u"Waits");
}

TEST_F(Activities, AnEqualEventIsAnnouncedAgain)
{
    QSignalSpy changes(&coordinator, &ActivityCoordinator::currentChanged);
    const SystemActivity sound = level();
    coordinator.post(sound);
    coordinator.post(sound);
    EXPECT_EQ(changes.count(), 2);
}

TEST_F(Activities, AJumpOfTheClockEndsNothingEarly)
{
    coordinator.post(charging());
    time.jumpWallClock(3600);
    time.advance(3.9);
    EXPECT_EQ(shown(), u"Charging");
}

} // namespace
} // namespace brindle
