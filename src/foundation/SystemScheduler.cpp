#include "foundation/SystemScheduler.h"

#include <QCoreApplication>
#include <QEvent>
#include <QTimerEvent>

#include <algorithm>
#include <chrono>
#include <cmath>

namespace brindle {

namespace {

const auto postedEvent = QEvent::Type(QEvent::registerEventType());

/// Waits longer than this are cut into several: the platform's timer counts milliseconds in 32 bits.
constexpr double longestWait = 86400;

template <typename Clock> double secondsOf()
{
    return std::chrono::duration<double>(Clock::now().time_since_epoch()).count();
}

} // namespace

SystemScheduler::SystemScheduler(QObject *parent) : QObject(parent) { }

SystemScheduler::~SystemScheduler() = default;

Date SystemScheduler::now() const
{
    return Date::fromSecondsSince1970(secondsOf<std::chrono::system_clock>());
}

double SystemScheduler::uptime() const
{
    return secondsOf<std::chrono::steady_clock>();
}

Delay SystemScheduler::after(double seconds, std::function<void()> work)
{
    return add(seconds, 0, 0, std::move(work));
}

Delay SystemScheduler::every(double seconds, double tolerance, std::function<void()> work)
{
    Q_ASSERT(seconds > 0);
    return add(seconds, seconds, tolerance, std::move(work));
}

Delay SystemScheduler::add(double seconds, double interval, double tolerance, std::function<void()> work)
{
    Delay delay = m_queue.add(uptime() + std::max(seconds, 0.0), interval, tolerance, std::move(work));
    arm();
    return delay;
}

void SystemScheduler::post(std::function<void()> work)
{
    bool isFirst = false;
    {
        const std::scoped_lock lock(m_postedMutex);
        isFirst = m_posted.empty();
        m_posted.push_back(std::move(work));
    }
    // One event for however many pieces of work: the turn that it brings runs them all.
    if (isFirst)
        QCoreApplication::postEvent(this, new QEvent(postedEvent));
}

bool SystemScheduler::event(QEvent *event)
{
    if (event->type() == postedEvent) {
        runPosted();
        return true;
    }
    if (event->type() == QEvent::Timer && static_cast<QTimerEvent *>(event)->timerId() == m_timer.timerId()) {
        runDue();
        return true;
    }
    return QObject::event(event);
}

// A cancelled delay leaves the timer as it is: one wake-up for nothing costs less than arming it each time.
void SystemScheduler::arm()
{
    const std::optional<double> wakeUp = m_queue.latestWakeUp();
    if (!wakeUp) {
        m_timer.stop();
        m_armedFor.reset();
        return;
    }
    if (m_armedFor && *m_armedFor <= *wakeUp)
        return;
    const double wait = std::clamp(*wakeUp - uptime(), 0.0, longestWait);
    m_timer.start(int(std::ceil(wait * 1000)), Qt::PreciseTimer, this);
    m_armedFor = wakeUp;
}

void SystemScheduler::runDue()
{
    m_timer.stop();
    m_armedFor.reset();
    // Work that is added meanwhile waits for the next turn, so that nothing can keep this one from ending.
    const double moment = uptime();
    while (m_queue.runNext(moment)) { }
    arm();
}

void SystemScheduler::runPosted()
{
    std::deque<std::function<void()>> posted;
    {
        const std::scoped_lock lock(m_postedMutex);
        posted.swap(m_posted);
    }
    for (const auto &work : posted)
        work();
}

} // namespace brindle
