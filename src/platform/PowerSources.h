#pragma once

#include "foundation/Subscription.h"

#include <QList>
#include <QString>
#include <QVariantMap>

#include <functional>
#include <optional>

namespace brindle {

/// The keys of a power source's description, and the words among its values.
namespace PowerSourceKey {
inline const QString type = QStringLiteral("Type"); ///< string; `internalBattery` among others
inline const QString currentCapacity = QStringLiteral("Current Capacity"); ///< integer
inline const QString maxCapacity =
    QStringLiteral("Max Capacity"); ///< integer, in the unit of the current one
inline const QString powerSourceState =
    QStringLiteral("Power Source State"); ///< string; `acPower` or another
inline const QString isCharging = QStringLiteral("Is Charging"); ///< boolean
inline const QString isCharged = QStringLiteral("Is Charged"); ///< boolean
} // namespace PowerSourceKey

namespace PowerSourceValue {
inline const QString internalBattery = QStringLiteral("InternalBattery");
inline const QString ups = QStringLiteral("UPS");
inline const QString acPower = QStringLiteral("AC Power");
inline const QString batteryPower = QStringLiteral("Battery Power");
} // namespace PowerSourceValue

/// What the machine's power supplies say.
///
/// `sources()` answers from memory and never blocks. Before the first answer of the system, and while it
/// cannot tell, the result is absent: that is no error, and the caller keeps what it had. Main thread.
class PowerSources
{
public:
    virtual ~PowerSources() = default;

    /// One description for each source, in the system's order. An absent one is a source of which nothing is
    /// known. Values come as the system sent them: any may be missing or of a wrong type.
    virtual std::optional<QList<std::optional<QVariantMap>>> sources() const = 0;
    /// Calls `changed` when any source changed, at most once a turn, however many values moved. Empty when
    /// the system has no such notification.
    [[nodiscard]] virtual Subscription notify(std::function<void()> changed) = 0;
};

} // namespace brindle
