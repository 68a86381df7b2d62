#include "activities/ActivityCoordinator.h"

#include <QThread>

#include <algorithm>

namespace brindle {

ActivityCoordinator::ActivityCoordinator(Scheduler &scheduler, QObject *parent)
    : QObject(parent)
    , m_scheduler(scheduler)
{ }

void ActivityCoordinator::post(const SystemActivity &activity)
{
    if (QThread::currentThread() == thread())
        arbitrate(activity);
    else
        m_scheduler.post(m_lifetime.guard([this, activity] { arbitrate(activity); }));
}

void ActivityCoordinator::arbitrate(const SystemActivity &activity)
{
    const auto isLevel = [](const SystemActivity &other) {
        return other.type == ActivityType::systemControl;
    };
    // A held volume key is one level display that jumps, however many events it sends.
    if (isLevel(activity) && m_current && isLevel(*m_current)) {
        m_queue.removeIf(isLevel);
        show(activity);
        return;
    }
    if (m_current && activity.priority < m_current->priority) {
        m_queue.append(activity);
        sortQueue();
        return;
    }
    if (m_current)
        m_queue.append(*m_current);
    show(activity);
}

void ActivityCoordinator::show(const SystemActivity &activity)
{
    // Observers may post in turn, so everything that belongs to this activity stands before they are told.
    m_expiry = m_scheduler.after(activity.effectiveDuration(), [this, activity] { expire(activity); });
    m_current = activity;
    Q_EMIT currentChanged();
}

void ActivityCoordinator::expire(const SystemActivity &activity)
{
    if (!m_current || m_current->id != activity.id)
        return;
    m_current.reset();
    Q_EMIT currentChanged();
    // An observer may have posted meanwhile; what it posted is on screen then.
    if (!m_current)
        showNext();
}

void ActivityCoordinator::showNext()
{
    const Date now = m_scheduler.now();
    m_queue.removeIf([now](const SystemActivity &activity) {
        return now - activity.createdAt > 2 * activity.effectiveDuration();
    });
    sortQueue();
    if (!m_queue.isEmpty())
        show(m_queue.takeFirst());
}

// Among equals the one that has waited longest goes first.
void ActivityCoordinator::sortQueue()
{
    std::ranges::stable_sort(m_queue, std::ranges::greater(), &SystemActivity::priority);
}

} // namespace brindle
