#include "platform/linux/dbus/UPowerDescription.h"

#include "platform/PowerSources.h"
#include "platform/linux/dbus/BusMessages.h"

#include <algorithm>
#include <cmath>

namespace brindle {

namespace {

/// UPower's words in numbers.
enum DeviceType : uint { linePower = 1, battery = 2, ups = 3 };
enum DeviceState : uint { charging = 1, fullyCharged = 4 };

QString typeName(uint type, bool suppliesMachine)
{
    if (type == battery && suppliesMachine)
        return PowerSourceValue::internalBattery;
    if (type == ups)
        return PowerSourceValue::ups;
    if (type == linePower)
        return QStringLiteral("Line Power");
    // Mice, headsets, phones: batteries that this machine only knows of.
    return QStringLiteral("Accessory Source");
}

} // namespace

std::optional<QVariantMap> describePowerSource(const QVariantMap &device, std::optional<bool> onBattery)
{
    const auto type = bus::typed<uint>(device, QStringLiteral("Type"));
    const auto state = bus::typed<uint>(device, QStringLiteral("State"));
    const auto percentage = bus::typed<double>(device, QStringLiteral("Percentage"));
    const bool suppliesMachine = bus::typed<bool>(device, QStringLiteral("PowerSupply")).value_or(false);
    if (type == battery && !bus::typed<bool>(device, QStringLiteral("IsPresent")).value_or(true))
        return std::nullopt;

    QVariantMap description;
    if (type)
        description[PowerSourceKey::type] = typeName(*type, suppliesMachine);
    if (percentage && std::isfinite(*percentage)) {
        description[PowerSourceKey::currentCapacity] = int(std::lround(std::clamp(*percentage, 0.0, 100.0)));
        description[PowerSourceKey::maxCapacity] = 100;
    }
    if (onBattery) {
        description[PowerSourceKey::powerSourceState] =
            *onBattery ? PowerSourceValue::batteryPower : PowerSourceValue::acPower;
    }
    if (state) {
        description[PowerSourceKey::isCharging] = *state == charging;
        description[PowerSourceKey::isCharged] = *state == fullyCharged;
    }
    return description;
}

} // namespace brindle
