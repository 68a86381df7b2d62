#pragma once

#include "contract/power/PowerWorld.h"
#include "foundation/ManualScheduler.h"
#include "foundation/SystemScheduler.h"
#include "platform/linux/dbus/BusConnection.h"
#include "platform/linux/dbus/UPowerSources.h"
#include "support/dbus/DbusMock.h"
#include "support/dbus/PrivateBus.h"

#include <memory>

namespace brindle::test {

/// A private system bus with a scripted UPower on it.
///
/// Messages travel in real time; how long the port lets them settle is told by the test.
class UPowerWorld : public PowerWorld
{
public:
    UPowerWorld();

    PowerSources &port() override { return m_port; }
    void comeUp(int percentage, bool onMains, bool isCharging) override;
    void setMains(bool onMains) override;
    void setPercentage(int percentage) override;
    void addUps() override;
    void takeBatteryOut() override;
    void settle() override;

    /// The daemon alone, without any device.
    void startDaemon(bool onMains);
    DbusMock &daemon() { return *m_daemon; }
    void killDaemon();
    void addBattery(int percentage, bool isCharging);
    void setDevice(const QVariantMap &properties, const QString &deviceName = batteryName);
    void setMachine(const QVariantMap &properties);

    PrivateBus bus;
    ManualScheduler time;

private:
    void addDevice(const QString &deviceName, int percentage, bool isCharging);

    static inline const QString batteryName = QStringLiteral("battery_BAT0");

    SystemScheduler m_busTime;
    BusConnection m_connection{BusConnection::busAt(bus.address()), m_busTime};
    UPowerSources m_port{m_connection, time};
    std::unique_ptr<DbusMock> m_daemon;
};

/// The first internal battery, as the port describes it now; empty when there is none.
QVariantMap internalBattery(const PowerSources &port);

} // namespace brindle::test
