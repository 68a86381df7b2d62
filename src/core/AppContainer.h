#pragma once

#include "media/MediaProvider.h"

#include <QObject>

#include <memory>

namespace brindle {

class ActivityCoordinator;
class BatteryMonitor;
class BluetoothMonitor;
class Platform;
class SettingsStore;
class SystemControlsService;

/// Posted on the platform's notification centre to open or close the island.
inline const QString toggleIslandNotification = QStringLiteral("Brindle.ToggleIsland");

/// The composition root: one instance of every service, made in a fixed order and started and stopped
/// together.
///
/// Built on a platform that outlives it; a test builds as many as it likes. Main thread.
class AppContainer : public QObject
{
    Q_OBJECT

public:
    /// A test may give a stand-in for what plays.
    explicit AppContainer(Platform &platform, std::unique_ptr<MediaProvider> media = nullptr);
    ~AppContainer() override;

    Platform &platform() const { return m_platform; }
    SettingsStore &settings() const { return *m_settings; }
    ActivityCoordinator &activities() const { return *m_activities; }
    SystemControlsService &systemControls() const { return *m_systemControls; }
    BatteryMonitor &battery() const { return *m_battery; }
    BluetoothMonitor &bluetooth() const { return *m_bluetooth; }
    MediaProvider &media() const { return *m_media; }
    bool isStarted() const { return m_isStarted; }

    void start();
    void stop();

private:
    Platform &m_platform;
    std::unique_ptr<SettingsStore> m_settings;
    std::unique_ptr<ActivityCoordinator> m_activities;
    std::unique_ptr<SystemControlsService> m_systemControls;
    std::unique_ptr<MediaProvider> m_media;
    std::unique_ptr<BatteryMonitor> m_battery;
    std::unique_ptr<BluetoothMonitor> m_bluetooth;
    bool m_isStarted = false;
};

} // namespace brindle
