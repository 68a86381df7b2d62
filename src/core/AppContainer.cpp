#include "core/AppContainer.h"

#include "activities/ActivityCoordinator.h"
#include "activities/BatteryMonitor.h"
#include "activities/BluetoothMonitor.h"
#include "activities/SystemControlsService.h"
#include "core/SettingsStore.h"
#include "foundation/SerialQueue.h"
#include "media/ApplicationMediaFallback.h"
#include "media/MediaRemoteProcessBridge.h"
#include "media/SystemMediaService.h"
#include "platform/Platform.h"

#include <utility>

namespace brindle {

namespace {

const QString fallbackQueueLabel = QStringLiteral("com.brindle.media-fallback");

std::unique_ptr<MediaProvider> makeMedia(Platform &platform)
{
    auto remote = std::make_unique<MediaRemoteProcessBridge>(platform.bundle(), platform.childProcesses(),
        platform.workspace(), platform.scheduler(),
        platform.makeSerialQueue(MediaRemoteProcessBridge::ioQueueLabel()),
        platform.makeSerialQueue(MediaRemoteProcessBridge::commandQueueLabel()));
    auto fallback = std::make_unique<ApplicationMediaFallback>(
        platform.scriptRunner(), platform.scheduler(), platform.bundle());
    return std::make_unique<SystemMediaService>(std::move(remote), std::move(fallback),
        platform.makeSerialQueue(fallbackQueueLabel), platform.audioOutput(), platform.workspace(),
        platform.scheduler());
}

} // namespace

AppContainer::AppContainer(Platform &platform, std::unique_ptr<MediaProvider> media)
    : m_platform(platform)
    , m_settings(std::make_unique<SettingsStore>(platform.userDefaults(), platform.scheduler()))
    , m_activities(std::make_unique<ActivityCoordinator>(platform.scheduler()))
    , m_systemControls(std::make_unique<SystemControlsService>(*m_activities, *m_settings,
          SystemControlsService::Ports{platform.audioOutput(), platform.displayBrightness(),
              platform.mediaKeys(), platform.inputMonitoring(), platform.application()},
          platform.scheduler()))
    , m_media(media ? std::move(media) : makeMedia(platform))
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
    m_media->start();
}

void AppContainer::stop()
{
    if (!std::exchange(m_isStarted, false))
        return;
    m_battery->stop();
    m_bluetooth->stop();
    m_systemControls->stop();
    m_media->stop();
}

} // namespace brindle
