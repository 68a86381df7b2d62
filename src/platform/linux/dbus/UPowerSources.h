#pragma once

#include "foundation/Scheduler.h"
#include "platform/PowerSources.h"
#include "platform/linux/dbus/BusService.h"

#include <QObject>

#include <memory>

namespace brindle {

class BusConnection;
class UPowerSession;

/// The power supplies as UPower knows them. Begins to look with the first `notify`; the daemon may be
/// missing, come late, hang, die and return.
///
/// Messages that belong together come one by one, so a change is told when they have settled, `settlingTime`
/// after the first.
class UPowerSources : public QObject, public PowerSources
{
    Q_OBJECT

public:
    using Sources = std::optional<QList<std::optional<QVariantMap>>>;

    static constexpr double settlingTime = 0.03; // seconds

    UPowerSources(BusConnection &systemBus, Scheduler &scheduler);
    ~UPowerSources() override;

    Sources sources() const override { return m_sources; }
    [[nodiscard]] Subscription notify(std::function<void()> changed) override;

Q_SIGNALS:
    void announced();

private:
    void begin(const QString &owner);
    void end();
    void settle();
    void take();

    Scheduler &m_scheduler;
    BusService m_service;
    std::unique_ptr<UPowerSession> m_session;
    Sources m_sources;
    /// What was told last; survives the daemon, so that its mere return is no news.
    Sources m_told;
    Delay m_settling;
};

} // namespace brindle
