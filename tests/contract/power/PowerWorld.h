#pragma once

#include "platform/PowerSources.h"
#include "platform/fake/FakePowerSources.h"

namespace brindle::test {

/// A machine with power supplies, seen through the port, and the hand that changes them.
class PowerWorld
{
public:
    virtual ~PowerWorld() = default;

    virtual PowerSources &port() = 0;
    /// The system's service comes up, with one internal battery.
    virtual void comeUp(int percentage, bool onMains, bool isCharging) = 0;
    virtual void setMains(bool onMains) = 0;
    virtual void setPercentage(int percentage) = 0;
    virtual void addUps() = 0;
    virtual void takeBatteryOut() = 0;
    /// Lets everything that was done arrive at the port.
    virtual void settle() = 0;
};

class FakePowerWorld : public PowerWorld
{
public:
    PowerSources &port() override { return m_port; }
    void comeUp(int percentage, bool onMains, bool isCharging) override
    {
        m_battery = FakePowerSources::battery(percentage, onMains, isCharging);
        update();
    }
    void setMains(bool onMains) override
    {
        m_battery->insert(PowerSourceKey::powerSourceState,
            onMains ? PowerSourceValue::acPower : PowerSourceValue::batteryPower);
        update();
    }
    void setPercentage(int percentage) override
    {
        m_battery->insert(PowerSourceKey::currentCapacity, percentage);
        update();
    }
    void addUps() override
    {
        m_hasUps = true;
        update();
    }
    void takeBatteryOut() override
    {
        m_battery.reset();
        update();
    }
    void settle() override { }

private:
    void update()
    {
        QList<std::optional<QVariantMap>> sources;
        if (m_battery)
            sources.append(m_battery);
        if (m_hasUps)
            sources.append(QVariantMap{{PowerSourceKey::type, PowerSourceValue::ups}});
        m_port.set(sources);
    }

    FakePowerSources m_port;
    std::optional<QVariantMap> m_battery;
    bool m_hasUps = false;
};

} // namespace brindle::test
