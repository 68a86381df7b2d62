#pragma once

#include <QVariantMap>

#include <optional>

namespace brindle {

/// What the power port says of a device, from the properties that UPower gives it. Absent for a battery bay
/// that is empty. A property that is missing or of a wrong type leaves its key out.
///
/// `onBattery` is what UPower says of the whole machine, absent when it did not say.
std::optional<QVariantMap> describePowerSource(const QVariantMap &device, std::optional<bool> onBattery);

} // namespace brindle
