// What one look at the levels costs while nothing has changed, in microseconds, the scheduler's part
// included.
//
// On ports that announce nothing, so that every tick is taken; on real ones there is none at rest.

#include "activities/ActivityCoordinator.h"
#include "activities/SystemControlsService.h"
#include "core/SettingsStore.h"
#include "platform/fake/FakePlatform.h"

#include <QElapsedTimer>

#include <cstdio>

using namespace brindle;

int main()
{
    constexpr int ticks = 200'000;
    constexpr double interval = 0.15;

    FakePlatform machine;
    machine.audio.refusesNotification = true;
    machine.audio.set({{0.5, false}});
    machine.brightness.set(0.5);
    SettingsStore settings(machine.defaults, machine.time);
    settings.setSystemControlsEnabled(true);
    ActivityCoordinator coordinator(machine.time);
    SystemControlsService service(coordinator, settings,
        {machine.audio, machine.brightness, machine.keys, machine.monitoring, machine.host}, machine.time);
    service.start();
    machine.time.advance(1000 * interval);

    const int before = machine.audio.readings;
    QElapsedTimer clock;
    clock.start();
    machine.time.advance(ticks * interval);
    const auto nanoseconds = double(clock.nsecsElapsed());
    std::printf("%.3f\n", nanoseconds / 1000 / (machine.audio.readings - before));
}
