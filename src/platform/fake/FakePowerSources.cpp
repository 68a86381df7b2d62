#include "platform/fake/FakePowerSources.h"

namespace brindle {

Subscription FakePowerSources::notify(std::function<void()> changed)
{
    if (refusesNotification)
        return {};
    *m_changed = std::move(changed);
    return Subscription{[weak = std::weak_ptr(m_changed)] {
        if (const auto alive = weak.lock())
            *alive = nullptr;
    }};
}

void FakePowerSources::set(const Sources &sources)
{
    m_sources = sources;
    announce();
}

void FakePowerSources::announce()
{
    if (const auto changed = *m_changed)
        changed();
}

QVariantMap FakePowerSources::battery(int capacity, bool onMains, bool isCharging, bool isCharged)
{
    return {
        {PowerSourceKey::type, PowerSourceValue::internalBattery},
        {PowerSourceKey::currentCapacity, capacity},
        {PowerSourceKey::maxCapacity, 100},
        {PowerSourceKey::powerSourceState,
            onMains ? PowerSourceValue::acPower : PowerSourceValue::batteryPower},
        {PowerSourceKey::isCharging, isCharging},
        {PowerSourceKey::isCharged, isCharged},
    };
}

} // namespace brindle
