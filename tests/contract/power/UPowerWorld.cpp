#include "contract/power/UPowerWorld.h"

#include "support/EventLoop.h"

#include <QDBusObjectPath>

namespace brindle::test {

namespace {

const QString name = QStringLiteral("org.freedesktop.UPower");
const QString machine = QStringLiteral("/org/freedesktop/UPower");
const QString devices = QStringLiteral("/org/freedesktop/UPower/devices/");

} // namespace

UPowerWorld::UPowerWorld() = default;

void UPowerWorld::startDaemon(bool onMains)
{
    const QString parameters = QStringLiteral(R"({"OnBattery": %1})")
                                   .arg(onMains ? QStringLiteral("false") : QStringLiteral("true"));
    m_daemon = std::make_unique<DbusMock>(bus, name, QStringLiteral("upower"), parameters);
}

void UPowerWorld::killDaemon()
{
    m_daemon->kill();
    m_daemon.reset();
    settle();
}

void UPowerWorld::comeUp(int percentage, bool onMains, bool isCharging)
{
    startDaemon(onMains);
    addBattery(percentage, isCharging);
    eventually([this] {
        time.advance(UPowerSources::settlingTime);
        return m_port.sources().has_value();
    });
    settle();
}

void UPowerWorld::addBattery(int percentage, bool isCharging)
{
    addDevice(batteryName, percentage, isCharging);
}

void UPowerWorld::addDevice(const QString &deviceName, int percentage, bool isCharging)
{
    m_daemon->script(machine,
        isCharging ? QStringLiteral("AddChargingBattery") : QStringLiteral("AddDischargingBattery"),
        {deviceName, QStringLiteral("Mock"), double(percentage), qlonglong(3600)});
}

void UPowerWorld::setDevice(const QVariantMap &properties, const QString &deviceName)
{
    m_daemon->script(machine, QStringLiteral("SetDeviceProperties"),
        {QVariant::fromValue(QDBusObjectPath(devices + deviceName)), properties});
}

void UPowerWorld::setMachine(const QVariantMap &properties)
{
    m_daemon->script(machine, QStringLiteral("UpdateProperties"), {name, properties});
}

void UPowerWorld::setMains(bool onMains)
{
    setMachine({{QStringLiteral("OnBattery"), !onMains}});
}

void UPowerWorld::setPercentage(int percentage)
{
    setDevice({{QStringLiteral("Percentage"), double(percentage)}});
}

void UPowerWorld::addUps()
{
    addDevice(QStringLiteral("ups_hiddev0"), 100, true);
    setDevice({{QStringLiteral("Type"), 3U}}, QStringLiteral("ups_hiddev0"));
}

void UPowerWorld::takeBatteryOut()
{
    m_daemon->script(machine, QStringLiteral("RemoveDevice"),
        {QVariant::fromValue(QDBusObjectPath(devices + batteryName))});
}

void UPowerWorld::settle()
{
    // A message may make the port ask again; the answer to that settles too.
    deliverInRounds(*m_connection.waitForConnection(10), m_daemon.get(),
        [this] { time.advance(UPowerSources::settlingTime); });
}

QVariantMap internalBattery(const PowerSources &port)
{
    const auto sources = port.sources().value_or(QList<std::optional<QVariantMap>>());
    for (const auto &source : sources) {
        if (source && source->value(PowerSourceKey::type) == PowerSourceValue::internalBattery)
            return *source;
    }
    return {};
}

} // namespace brindle::test
