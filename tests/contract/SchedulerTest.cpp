#include "foundation/ManualScheduler.h"
#include "foundation/SystemScheduler.h"

#include <QAbstractEventDispatcher>
#include <QEvent>
#include <QEventLoop>
#include <QThread>

#include <atomic>
#include <gmock/gmock.h>
#include <thread>

namespace brindle {
namespace {

using testing::ElementsAre;

/// Long enough to be told apart from nothing, short enough not to be waited for.
constexpr double moment = 0.01;

void pass(ManualScheduler &scheduler, double seconds)
{
    scheduler.advance(seconds);
}

void pass(SystemScheduler &scheduler, double seconds)
{
    QEventLoop loop;
    const Delay end = scheduler.after(seconds, [&loop] { loop.quit(); });
    loop.exec();
}

template <typename Time> class SchedulerContract : public testing::Test
{
protected:
    void pass(double seconds) { brindle::pass(time, seconds); }

    Time time;
    QThread *mainThread = QThread::currentThread();
};

using Schedulers = testing::Types<ManualScheduler, SystemScheduler>;
TYPED_TEST_SUITE(SchedulerContract, Schedulers);

TYPED_TEST(SchedulerContract, DelayedWorkRunsOnceAndNotBeforeItsTime)
{
    const double start = this->time.uptime();
    std::vector<double> ran;
    const Delay delay = this->time.after(moment, [&] { ran.push_back(this->time.uptime() - start); });
    EXPECT_TRUE(delay.isPending());
    this->pass(4 * moment);
    EXPECT_FALSE(delay.isPending());
    EXPECT_THAT(ran, ElementsAre(testing::Ge(moment)));
}

TYPED_TEST(SchedulerContract, WorkRunsInTheOrderOfItsDeadlines)
{
    std::string ran;
    const Delay third = this->time.after(3 * moment, [&] { ran += 'c'; });
    const Delay first = this->time.after(moment, [&] { ran += 'a'; });
    const Delay second = this->time.after(2 * moment, [&] { ran += 'b'; });
    this->pass(4 * moment);
    EXPECT_EQ(ran, "abc");
}

TYPED_TEST(SchedulerContract, WorkThatIsDueTogetherRunsInTheOrderOfItsMaking)
{
    std::string ran;
    std::vector<Delay> delays;
    for (const char letter : std::string("abcdef"))
        delays.push_back(this->time.after(moment, [&ran, letter] { ran += letter; }));
    this->pass(2 * moment);
    EXPECT_EQ(ran, "abcdef");
}

TYPED_TEST(SchedulerContract, AWaitOfNothingOrLessEndsOnALaterTurn)
{
    int ran = 0;
    const Delay nothing = this->time.after(0, [&] { ++ran; });
    const Delay less = this->time.after(-1, [&] { ++ran; });
    EXPECT_EQ(ran, 0);
    this->pass(0);
    EXPECT_EQ(ran, 2);
}

TYPED_TEST(SchedulerContract, WorkMayAskForMoreWork)
{
    std::string ran;
    Delay second;
    const Delay first = this->time.after(moment, [&] {
        ran += 'a';
        second = this->time.after(moment, [&] { ran += 'b'; });
    });
    this->pass(4 * moment);
    EXPECT_EQ(ran, "ab");
}

TYPED_TEST(SchedulerContract, DroppingTheHandleCancels)
{
    int ran = 0;
    {
        const Delay delay = this->time.after(moment, [&] { ++ran; });
    }
    this->pass(2 * moment);
    EXPECT_EQ(ran, 0);
}

TYPED_TEST(SchedulerContract, OverwritingTheHandleCancelsWhatItHeld)
{
    std::string ran;
    Delay delay = this->time.after(moment, [&] { ran += 'a'; });
    delay = this->time.after(moment, [&] { ran += 'b'; });
    this->pass(2 * moment);
    EXPECT_EQ(ran, "b");
}

TYPED_TEST(SchedulerContract, CancellingAgainOrAfterTheEndDoesNothing)
{
    int ran = 0;
    Delay cancelled = this->time.after(moment, [&] { ++ran; });
    cancelled.cancel();
    cancelled.cancel();
    EXPECT_FALSE(cancelled.isPending());
    Delay finished = this->time.after(moment, [&] { ++ran; });
    this->pass(2 * moment);
    finished.cancel();
    EXPECT_EQ(ran, 1);
}

TYPED_TEST(SchedulerContract, WorkMayCancelOtherWorkThatIsDueWithIt)
{
    int ran = 0;
    Delay second;
    const Delay first = this->time.after(0, [&] { second.cancel(); });
    second = this->time.after(0, [&] { ++ran; });
    this->pass(moment);
    EXPECT_EQ(ran, 0);
}

TYPED_TEST(SchedulerContract, ADelayMayReplaceItsOwnHandleWhileItRuns)
{
    auto capture = std::make_shared<std::string>();
    Delay delay;
    delay = this->time.after(moment, [&, capture] {
        delay = this->time.after(moment, [capture] { *capture += 'b'; });
        *capture += 'a';
    });
    this->pass(4 * moment);
    EXPECT_EQ(*capture, "ab");
    EXPECT_EQ(capture.use_count(), 1);
}

TYPED_TEST(SchedulerContract, RepeatedWorkComesEachIntervalAfterTheFirst)
{
    const double start = this->time.uptime();
    std::vector<double> ran;
    Delay delay;
    delay = this->time.every(moment, 0, [&] {
        ran.push_back(this->time.uptime() - start);
        if (ran.size() == 3)
            delay.cancel();
    });
    while (ran.size() < 3)
        this->pass(moment);
    EXPECT_FALSE(delay.isPending());
    this->pass(2 * moment);
    EXPECT_THAT(ran, ElementsAre(testing::Ge(moment), testing::Ge(2 * moment), testing::Ge(3 * moment)));
}

TYPED_TEST(SchedulerContract, RepeatedWorkStaysPendingWhileItRuns)
{
    bool wasPending = false;
    Delay delay;
    delay = this->time.every(moment, 0, [&] { wasPending = delay.isPending(); });
    this->pass(2 * moment);
    EXPECT_TRUE(wasPending);
}

TYPED_TEST(SchedulerContract, PostedWorkRunsOnALaterTurnInTheOrderOfPosting)
{
    std::string ran;
    this->time.post([&] {
        ran += 'a';
        this->time.post([&] { ran += 'c'; });
    });
    this->time.post([&] { ran += 'b'; });
    EXPECT_EQ(ran, "");
    this->pass(moment);
    EXPECT_EQ(ran, "abc");
}

TYPED_TEST(SchedulerContract, PostsFromManyThreadsAllRunOnTheMainThread)
{
    constexpr int threadCount = 4;
    constexpr int postCount = 250;
    std::vector<int> ran;
    bool isMain = true;
    std::vector<std::thread> threads;
    threads.reserve(threadCount);
    for (int number = 0; number < threadCount; ++number) {
        threads.emplace_back([&, number] {
            for (int post = 0; post < postCount; ++post) {
                this->time.post([&, number] {
                    isMain &= QThread::currentThread() == this->mainThread;
                    ran.push_back(number);
                });
            }
        });
    }
    this->pass(moment);
    for (auto &thread : threads)
        thread.join();
    this->pass(moment);
    EXPECT_TRUE(isMain);
    EXPECT_EQ(ran.size(), std::size_t(threadCount * postCount));
}

TYPED_TEST(SchedulerContract, TheClockMayBeReadOnAnyThreadWhileTimePasses)
{
    const double start = this->time.uptime();
    const Date date = this->time.now();
    std::atomic<bool> isOver = false;
    bool runsBack = false;
    std::thread reader([&] {
        double last = start;
        while (!isOver) {
            const double uptime = this->time.uptime();
            runsBack |= uptime < last || this->time.now() < date;
            last = uptime;
        }
    });
    this->pass(moment);
    isOver = true;
    reader.join();
    EXPECT_FALSE(runsBack);
    EXPECT_GE(this->time.uptime(), start + moment);
}

TYPED_TEST(SchedulerContract, WorkThatNeverRanIsReleasedWithTheScheduler)
{
    const auto capture = std::make_shared<int>();
    Delay delay;
    {
        TypeParam scheduler;
        delay = scheduler.after(moment, [capture] { });
        scheduler.post([capture] { });
    }
    EXPECT_FALSE(delay.isPending());
    delay.cancel();
    EXPECT_EQ(capture.use_count(), 1);
}

TYPED_TEST(SchedulerContract, UptimeNeverGoesBack)
{
    double last = this->time.uptime();
    for (int turn = 0; turn < 100; ++turn) {
        const double uptime = this->time.uptime();
        EXPECT_GE(uptime, last);
        last = uptime;
    }
}

/// Counts the wake-ups of a scheduler by its timer.
class WakeUps : public QObject
{
public:
    explicit WakeUps(SystemScheduler &scheduler) { scheduler.installEventFilter(this); }

    int count = 0;

protected:
    bool eventFilter(QObject *, QEvent *event) override
    {
        count += event->type() == QEvent::Timer;
        return false;
    }
};

qsizetype armedTimers(SystemScheduler &scheduler)
{
    return QAbstractEventDispatcher::instance()->registeredTimers(&scheduler).size();
}

TEST(SystemScheduler, HasOneTimerArmedForHoweverManyDelays)
{
    SystemScheduler time;
    EXPECT_EQ(armedTimers(time), 0);
    std::vector<Delay> delays;
    for (int number = 1; number <= 50; ++number)
        delays.push_back(time.after(number, [] { }));
    EXPECT_EQ(armedTimers(time), 1);
}

TEST(SystemScheduler, HasNoTimerArmedAtRest)
{
    SystemScheduler time;
    const Delay delay = time.after(0, [] { });
    pass(time, moment);
    EXPECT_EQ(armedTimers(time), 0);
}

TEST(SystemScheduler, ToleranceLetsWorkShareAWakeUp)
{
    SystemScheduler time;
    WakeUps wakeUps(time);
    std::string ran;
    const Delay patient = time.every(2 * moment, 2 * moment, [&] { ran += 'p'; });
    QEventLoop loop;
    const Delay strict = time.after(3 * moment, [&] {
        ran += 's';
        loop.quit();
    });
    loop.exec();
    EXPECT_EQ(ran.substr(ran.size() - 2), "ps");
    EXPECT_EQ(wakeUps.count, 1);
}

TEST(SystemScheduler, WorkThatRunsAnEventLoopHoldsNothingElseUp)
{
    SystemScheduler time;
    std::string ran;
    QEventLoop inner;
    const Delay first = time.after(0, [&] {
        ran += 'a';
        inner.exec();
        ran += 'e';
    });
    const Delay second = time.after(0, [&] { ran += 'b'; });
    time.post([&] { time.post([&] { ran += 'c'; }); });
    const Delay last = time.after(2 * moment, [&] {
        ran += 'd';
        inner.quit();
    });
    pass(time, 4 * moment);
    EXPECT_THAT(ran, testing::AnyOf("abcde", "cabde", "acbde"));
}

TEST(SystemScheduler, AWaitBeyondTheTimersRangeIsKept)
{
    SystemScheduler time;
    const Delay delay = time.after(1e9, [] { FAIL(); });
    pass(time, moment);
    EXPECT_TRUE(delay.isPending());
}

} // namespace
} // namespace brindle
