#include "core/AppContainer.h"

#include "activities/ActivityCoordinator.h"
#include "activities/BatteryMonitor.h"
#include "activities/BluetoothMonitor.h"
#include "activities/SystemControlsService.h"
#include "core/SettingsStore.h"
#include "media/QuietMedia.h"
#include "platform/Platform.h"

#include <utility>

namespace brindle {

AppContainer::AppContainer(Platform &platform) : AppContainer(platform, std::make_unique<QuietMedia>()) { }

AppContainer::AppContainer(Platform &platform, std::unique_ptr<MediaProvider> media)
    : m_platform(platform)
    , m_settings(std::make_unique<SettingsStore>(platform.userDefaults(), platform.scheduler()))
    , m_activities(std::make_unique<ActivityCoordinator>(platform.scheduler()))
    , m_systemControls(std::make_unique<SystemControlsService>(*m_activities, *m_settings,
          SystemControlsService::Ports{platform.audioOutput(), platform.displayBrightness(),
              platform.mediaKeys(), platform.inputMonitoring(), platform.application()},
          platform.scheduler()))
    , m_media(std::move(media))
    , m_battery(
          std::make_unique<BatteryMonitor>(*m_activities, platform.powerSources(), platform.scheduler()))
    , m_bluetooth(std::make_unique<BluetoothMonitor>(
          *m_activities, platform.bluetoothDevices(), platform.scheduler()))
{ }

AppContainer::~AppContainer() = default;

void AppContainer::start()
{
    if (std::exchange(m_isStarted, true))
        return;
    m_battery->start();
    m_bluetooth->start();
    m_systemControls->start();
}

void AppContainer::stop()
{
    if (!std::exchange(m_isStarted, false))
        return;
    m_battery->stop();
    m_bluetooth->stop();
    m_systemControls->stop();
}

} // namespace brindle
