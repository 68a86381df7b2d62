#pragma once

#include "activities/ActivityCoordinator.h"
#include "activities/SystemControlsService.h"
#include "core/SettingsStore.h"
#include "platform/fake/FakePlatform.h"

#include <gmock/gmock.h>

namespace brindle {

/// The service on a machine in memory, whose levels a test moves, and all that it ever posted.
class SystemControls : public testing::Test
{
protected:
    using State = SystemControlsService::PermissionState;

    static constexpr double tick = 0.15;
    static constexpr double keyDelay = 0.045;

    SystemControls()
    {
        QObject::connect(&coordinator, &ActivityCoordinator::currentChanged, &coordinator, [this] {
            if (coordinator.current())
                posted.append(*coordinator.current());
        });
    }

    /// The setting as it was at launch, and the launch.
    void startWith(bool isEnabled)
    {
        settings.setSystemControlsEnabled(isEnabled);
        service.start();
    }
    void setEnabled(bool isEnabled)
    {
        settings.setSystemControlsEnabled(isEnabled);
        machine.time.runPosted();
    }
    /// Presses a key, and lets the time pass until it shows.
    void press(long key)
    {
        machine.keys.press(key);
        machine.time.advance(keyDelay);
    }
    void passTicks(int count = 1) { machine.time.advance(count * tick); }
    bool isAtRest() const
    {
        return !machine.audio.isObserved() && !machine.brightness.isObserved() && !machine.keys.isObserved()
            && machine.time.pendingCount() == 0;
    }
    /// What was posted since this was last asked.
    QList<ActivityContent> news()
    {
        QList<ActivityContent> contents;
        for (const SystemActivity &activity : std::exchange(posted, {}))
            contents.append(activity.content);
        return contents;
    }

    static ActivityContent sound(double progress, const QString &symbol)
    {
        return {QStringLiteral("Sound"), std::nullopt, symbol, progress};
    }
    static ActivityContent display(double progress)
    {
        return {QStringLiteral("Display"), std::nullopt, QStringLiteral("sun.max.fill"), progress};
    }

    FakePlatform machine;
    SettingsStore settings{machine.defaults, machine.time};
    ActivityCoordinator coordinator{machine.time};
    QList<SystemActivity> posted;
    SystemControlsService service{coordinator, settings,
        {machine.audio, machine.brightness, machine.keys, machine.monitoring, machine.host}, machine.time};
};

inline const QString mutedSymbol = QStringLiteral("speaker.slash.fill");
inline const QString lowSymbol = QStringLiteral("speaker.wave.1.fill");
inline const QString middleSymbol = QStringLiteral("speaker.wave.2.fill");
inline const QString fullSymbol = QStringLiteral("speaker.wave.3.fill");

} // namespace brindle
