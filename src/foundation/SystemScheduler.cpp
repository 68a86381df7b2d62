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
    // Made before the lock, so that the lock orders it before its end on the main thread.
    auto *wakeUp = new QEvent(postedEvent);
    {
        const std::scoped_lock lock(m_postedMutex);
        m_posted.push_back(std::move(work));
    }
    QCoreApplication::postEvent(this, wakeUp);
}

bool SystemScheduler::event(QEvent *event)
{
    if (event->type() == postedEvent) {
        runNextPosted();
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
    for (auto work = m_queue.takeDue(moment); work; work = m_queue.takeDue(moment)) {
        // The work may run an event loop of its own, which the rest must not miss.
        arm();
        work();
    }
    arm();
}

void SystemScheduler::runNextPosted()
{
    std::function<void()> work;
    {
        const std::scoped_lock lock(m_postedMutex);
        work = std::move(m_posted.front());
        m_posted.pop_front();
    }
    work();
}

} // namespace brindle
