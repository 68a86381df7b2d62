#include "activities/BatteryMonitor.h"

#include "activities/ActivityCoordinator.h"
#include "platform/PowerSources.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace brindle {

namespace {

constexpr double activityDuration = 4;

/// The value of the key if it is of the type, absent otherwise; nothing is converted.
int integerOr(const QVariantMap &description, const QString &key, int fallBack)
{
    const QVariant value = description.value(key);
    return value.typeId() == QMetaType::Int ? value.toInt() : fallBack;
}

bool isTrue(const QVariantMap &description, const QString &key)
{
    const QVariant value = description.value(key);
    return value.typeId() == QMetaType::Bool && value.toBool();
}

bool isText(const QVariantMap &description, const QString &key, const QString &text)
{
    const QVariant value = description.value(key);
    return value.typeId() == QMetaType::QString && value.toString() == text;
}

int percentageOf(const QVariantMap &battery)
{
    const double capacity = integerOr(battery, PowerSourceKey::currentCapacity, 0);
    const double maximum = std::max(integerOr(battery, PowerSourceKey::maxCapacity, 100), 1);
    // `round` takes halves away from zero. The range of the type is the only limit.
    const double percentage = std::round(capacity / maximum * 100);
    return int(
        std::clamp<double>(percentage, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()));
}

std::optional<QVariantMap> internalBattery(const PowerSources &powerSources)
{
    const auto sources = powerSources.sources();
    if (!sources)
        return std::nullopt;
    for (const auto &description : *sources) {
        if (description && isText(*description, PowerSourceKey::type, PowerSourceValue::internalBattery))
            return description;
    }
    return std::nullopt;
}

} // namespace

BatteryMonitor::BatteryMonitor(ActivityCoordinator &activityCoordinator, PowerSources &powerSources,
    Scheduler &scheduler, QObject *parent)
    : QObject(parent)
    , m_activityCoordinator(activityCoordinator)
    , m_powerSources(powerSources)
    , m_scheduler(scheduler)
{ }

void BatteryMonitor::start()
{
    refresh();
    m_runLoopSource =
        m_powerSources.notify([this] { m_scheduler.post(m_lifetime.guard([this] { refresh(); })); });
}

void BatteryMonitor::stop()
{
    m_runLoopSource.reset();
}

void BatteryMonitor::refresh()
{
    const std::optional<QVariantMap> battery = internalBattery(m_powerSources);
    if (!battery)
        return;
    const auto state = [this] {
        return std::tuple(m_percentage, m_isCharging, m_isACConnected, m_isFullyCharged);
    };
    const auto before = state();
    m_percentage = percentageOf(*battery);
    m_isCharging = isTrue(*battery, PowerSourceKey::isCharging);
    m_isACConnected = isText(*battery, PowerSourceKey::powerSourceState, PowerSourceValue::acPower);
    m_isFullyCharged = isTrue(*battery, PowerSourceKey::isCharged);
    const bool mainsChanged = m_lastACConnected && *m_lastACConnected != m_isACConnected;
    m_lastACConnected = m_isACConnected;
    if (state() != before)
        Q_EMIT changed();
    if (mainsChanged)
        postMainsChange();
}

void BatteryMonitor::postMainsChange()
{
    SystemActivity activity;
    activity.id = QUuid::createUuid();
    activity.type = ActivityType::charging;
    activity.priority = ActivityPriority::charging;
    activity.createdAt = m_scheduler.now();
    activity.duration = activityDuration;
    activity.content.title = m_isACConnected ? QStringLiteral("Charging") : QStringLiteral("On Battery");
    activity.content.detail = QString::number(m_percentage) + u'%';
    activity.content.symbol =
        m_isACConnected ? QStringLiteral("battery.100percent.bolt") : QStringLiteral("battery.75percent");
    m_activityCoordinator.post(activity);
}

} // namespace brindle
