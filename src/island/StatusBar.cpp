#include "island/StatusBar.h"

#include "activities/ActivityCoordinator.h"
#include "activities/BatteryMonitor.h"
#include "core/AppContainer.h"
#include "island/ActivityPresentation.h"
#include "platform/AccessibilitySettings.h"
#include "platform/Platform.h"
#include "ui/LocalTime.h"

namespace brindle {

StatusBar::StatusBar(AppContainer &container, QObject *parent) : QObject(parent), m_container(container)
{
    connect(&container.activities(), &ActivityCoordinator::currentChanged, this, &StatusBar::leadingChanged);
    connect(&container.battery(), &BatteryMonitor::changed, this, &StatusBar::batteryChanged);
    connect(&container.platform().accessibilitySettings(), &AccessibilitySettings::reduceMotionChanged, this,
        &StatusBar::motionChanged);
}

StageSubject StatusBar::leading() const
{
    if (const auto &activity = m_container.activities().current())
        return {activity->id.toString(), QVariant::fromValue(ActivityPresentation::of(*activity))};
    return {QStringLiteral("clock"), {}};
}

QString StatusBar::batteryText() const
{
    return QStringLiteral("%1%").arg(m_container.battery().percentage());
}

QString StatusBar::batterySymbol() const
{
    return batterySymbol(m_container.battery().percentage(), isCharging());
}

QString StatusBar::batterySymbol(int percentage, bool isCharging)
{
    if (isCharging)
        return QStringLiteral("battery.100percent.bolt");
    if (percentage < 11)
        return QStringLiteral("battery.0percent");
    if (percentage < 38)
        return QStringLiteral("battery.25percent");
    if (percentage < 63)
        return QStringLiteral("battery.50percent");
    if (percentage < 88)
        return QStringLiteral("battery.75percent");
    return QStringLiteral("battery.100percent");
}

bool StatusBar::isACConnected() const
{
    return m_container.battery().isACConnected();
}

bool StatusBar::isCharging() const
{
    return m_container.battery().isCharging();
}

QString StatusBar::batteryName() const
{
    const QString level = QStringLiteral("Battery, %1").arg(batteryText());
    if (isCharging())
        return level + QStringLiteral(", charging");
    return isACConnected() ? level + QStringLiteral(", plugged in") : level;
}

Motion StatusBar::activityMotion() const
{
    return reducesMotion() ? Motion::makeEaseInOut(0.12) : Motion::makeSpring(0.38, 0.72);
}

Motion StatusBar::batteryMotion() const
{
    return reducesMotion() ? Motion::makeEaseInOut(0.12) : Motion::makeSpring(0.34, 0.7);
}

QString StatusBar::clockText(Date date, const QLocale &locale)
{
    return LocalTime::weekday(date, locale) + u' ' + LocalTime::hourAndMinute(date, locale);
}

QString StatusBar::clockText(double seconds)
{
    return clockText(Date::fromReferenceSeconds(seconds), QLocale());
}

bool StatusBar::reducesMotion() const
{
    return m_container.platform().accessibilitySettings().reduceMotion();
}

} // namespace brindle
