#pragma once

#include "foundation/Lifetime.h"
#include "foundation/Subscription.h"

#include <QObject>

#include <optional>

namespace brindle {

class ActivityCoordinator;
class PowerSources;
class Scheduler;

/// Follows the internal battery and posts when the mains adapter comes or goes. Main thread.
class BatteryMonitor : public QObject
{
    Q_OBJECT
    /// Charge in per cent, as the battery reports it; may exceed 100.
    Q_PROPERTY(int percentage READ percentage NOTIFY changed)
    Q_PROPERTY(bool isCharging READ isCharging NOTIFY changed)
    Q_PROPERTY(bool isACConnected READ isACConnected NOTIFY changed)
    Q_PROPERTY(bool isFullyCharged READ isFullyCharged NOTIFY changed)

public:
    BatteryMonitor(ActivityCoordinator &activityCoordinator, PowerSources &powerSources, Scheduler &scheduler,
        QObject *parent = nullptr);

    int percentage() const { return m_percentage; }
    bool isCharging() const { return m_isCharging; }
    bool isACConnected() const { return m_isACConnected; }
    bool isFullyCharged() const { return m_isFullyCharged; }

    void start();
    /// Ends the notification. What was last read stays, and a restart compares against it.
    void stop();
    void refresh();
    bool isObserving() const { return bool(m_runLoopSource); }

Q_SIGNALS:
    /// After a reading in which any of the four values changed.
    void changed();

private:
    void postMainsChange();

    ActivityCoordinator &m_activityCoordinator;
    PowerSources &m_powerSources;
    Scheduler &m_scheduler;
    int m_percentage = 0;
    bool m_isCharging = false;
    bool m_isACConnected = false;
    bool m_isFullyCharged = false;
    std::optional<bool> m_lastACConnected;
    Subscription m_runLoopSource;
    Lifetime m_lifetime;
};

} // namespace brindle
