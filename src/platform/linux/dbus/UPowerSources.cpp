#include "platform/linux/dbus/UPowerSources.h"

#include "platform/linux/dbus/UPowerSession.h"

#include <utility>

namespace brindle {

UPowerSources::UPowerSources(BusConnection &systemBus, Scheduler &scheduler)
    : m_scheduler(scheduler)
    , m_service(
          systemBus, QStringLiteral("org.freedesktop.UPower"), BusService::WhenAbsent::askTheBusToStartIt)
{
    connect(&m_service, &BusService::appeared, this, &UPowerSources::begin);
    connect(&m_service, &BusService::vanished, this, &UPowerSources::end);
}

UPowerSources::~UPowerSources() = default;

Subscription UPowerSources::notify(std::function<void()> changed)
{
    m_service.follow();
    const auto connection = connect(this, &UPowerSources::announced, this, std::move(changed));
    return Subscription{[connection] { disconnect(connection); }};
}

void UPowerSources::begin(const QString &owner)
{
    m_session = std::make_unique<UPowerSession>(m_service.connection(), owner);
    connect(m_session.get(), &UPowerSession::changed, this, &UPowerSources::settle);
}

void UPowerSources::end()
{
    m_settling.cancel();
    m_session.reset();
    m_sources.reset();
}

void UPowerSources::settle()
{
    if (!m_settling.isPending())
        m_settling = m_scheduler.after(settlingTime, [this] { take(); });
}

void UPowerSources::take()
{
    m_sources = m_session->sources();
    if (std::exchange(m_told, m_sources) != m_sources)
        Q_EMIT announced();
}

} // namespace brindle
