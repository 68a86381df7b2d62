#include "contract/power/UPowerWorld.h"
#include "support/EventLoop.h"

#include <QFile>
#include <QProcess>
#include <QProcessEnvironment>
#include <QTemporaryDir>

#include <gmock/gmock.h>

namespace brindle::test {

namespace {

using namespace Qt::StringLiterals;

/// A laptop on mains power, as the kernel shows it.
constexpr auto laptop = R"(P: /devices/platform/AC
E: SUBSYSTEM=power_supply
E: POWER_SUPPLY_NAME=AC
A: type=Mains\n
A: online=1\n

P: /devices/platform/BAT0
E: SUBSYSTEM=power_supply
E: POWER_SUPPLY_NAME=BAT0
A: type=Battery\n
A: present=1\n
A: status=Charging\n
A: technology=Li-ion\n
A: energy_full=60000000\n
A: energy_full_design=80000000\n
A: energy_now=48000000\n
A: voltage_now=12000000\n
A: power_now=9000000\n
)";

/// The daemon itself, made to see hardware that is not there.
class RealUPower
{
public:
    explicit RealUPower(const PrivateBus &bus)
    {
        QFile hardware(m_folder.filePath(u"laptop.umockdev"_s));
        if (hardware.open(QIODevice::WriteOnly))
            hardware.write(laptop);
        hardware.close();
        auto environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"DBUS_SYSTEM_BUS_ADDRESS"_s, bus.address());
        environment.insert(u"UPOWER_HISTORY_DIR"_s, m_folder.path());
        m_process.setProcessEnvironment(environment);
        m_process.setStandardOutputFile(QProcess::nullDevice());
        m_process.setStandardErrorFile(QProcess::nullDevice());
        endWithUs(m_process);
        m_process.start(
            u"umockdev-run"_s, {u"--device"_s, hardware.fileName(), u"--"_s, u"/usr/libexec/upowerd"_s});
    }
    ~RealUPower()
    {
        m_process.terminate();
        m_process.waitForFinished();
    }
    RealUPower(const RealUPower &) = delete;
    RealUPower &operator=(const RealUPower &) = delete;

private:
    QTemporaryDir m_folder;
    QProcess m_process;
};

} // namespace

TEST(RealUPower, ALaptopOnMainsPowerIsUnderstood)
{
    UPowerWorld world;
    const Subscription subscription = world.port().notify([] { });
    const RealUPower daemon{world.bus};
    ASSERT_TRUE(eventually([&world] {
        world.time.advance(UPowerSources::settlingTime);
        return !internalBattery(world.port()).isEmpty();
    }));
    const QVariantMap expected{
        {PowerSourceKey::type, PowerSourceValue::internalBattery},
        {PowerSourceKey::currentCapacity, 80},
        {PowerSourceKey::maxCapacity, 100},
        {PowerSourceKey::powerSourceState, PowerSourceValue::acPower},
        {PowerSourceKey::isCharging, true},
        {PowerSourceKey::isCharged, false},
    };
    EXPECT_EQ(internalBattery(world.port()), expected);
}

} // namespace brindle::test
