#pragma once

#include "activities/SystemActivity.h"
#include "foundation/Lifetime.h"
#include "foundation/Scheduler.h"

#include <QList>
#include <QObject>

#include <optional>

namespace brindle {

/// Arbitrates between brief events: at most one is on screen, the others wait or go stale.
///
/// An activity is `current`, or waiting, or gone; never two of these. `current` is read and written on the
/// main thread only; `post` may be called from any. Between the end of one activity and the next, observers
/// may see none.
class ActivityCoordinator : public QObject
{
    Q_OBJECT

public:
    explicit ActivityCoordinator(Scheduler &scheduler, QObject *parent = nullptr);

    const std::optional<SystemActivity> &current() const { return m_current; }
    /// What waits, in no particular order.
    const QList<SystemActivity> &queue() const { return m_queue; }
    /// Whether the end of `current` is pending.
    bool isExpiryPending() const { return m_expiry.isPending(); }

    void post(const SystemActivity &activity);

Q_SIGNALS:
    /// Each time `current` was set, also to an equal activity.
    void currentChanged();

private:
    void arbitrate(const SystemActivity &activity);
    void show(const SystemActivity &activity);
    void expire(const SystemActivity &activity);
    void showNext();
    void sortQueue();

    Scheduler &m_scheduler;
    std::optional<SystemActivity> m_current;
    QList<SystemActivity> m_queue;
    Delay m_expiry;
    Lifetime m_lifetime;
};

} // namespace brindle
