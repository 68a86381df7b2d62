#pragma once

#include "foundation/Lifetime.h"
#include "foundation/Poll.h"
#include "foundation/Scheduler.h"
#include "foundation/Subscription.h"
#include "platform/AudioOutput.h"

#include <QObject>
#include <QUuid>

#include <optional>
#include <vector>

namespace brindle {

class ActivityCoordinator;
class DisplayBrightness;
class HostApplication;
class InputMonitoring;
class MediaKeys;
class SettingsStore;

/// Shows the volume and the brightness when they change, for whoever switched that on.
///
/// Two detectors work together. The level observer compares what the machine says, and catches every change
/// from whatever cause; it needs no permission. The key monitor sees the keys themselves, is a little faster
/// and speaks also of a key that changes nothing; it needs the permission to monitor input. With the setting
/// off there is neither, nor any timer. Main thread.
class SystemControlsService : public QObject
{
    Q_OBJECT
    Q_PROPERTY(PermissionState permissionState READ permissionState NOTIFY permissionStateChanged)

public:
    /// What the key monitor can do.
    enum class PermissionState {
        disabled, ///< the setting is off
        permissionRequired,
        requesting, ///< the person was asked and has not granted it yet
        authorized,
        unavailable, ///< granted, but there is no monitor to be had
    };
    Q_ENUM(PermissionState)

    struct Ports
    {
        AudioOutput &audioOutput;
        DisplayBrightness &displayBrightness;
        MediaKeys &mediaKeys;
        InputMonitoring &inputMonitoring;
        HostApplication &application;
    };

    SystemControlsService(ActivityCoordinator &activities, SettingsStore &settings, const Ports &ports,
        Scheduler &scheduler, QObject *parent = nullptr);

    PermissionState permissionState() const { return m_permissionState; }

    void start();
    void stop();
    /// Has the person asked for the permission, unless it is there or the setting is off, and waits for it
    /// however long it takes.
    void requestPermission();

    bool isObservingLevels() const { return m_levelObservationTimer.has_value(); }
    bool isMonitoringKeys() const { return bool(m_globalEventMonitor); }
    bool isAwaitingPermission() const { return m_permissionTimer.isPending(); }
    /// How many of its timers and delays wait; none while nothing changes.
    int delaysPending() const;
    /// The brightness as last read, or guessed from keys on a display that does not say.
    std::optional<double> estimatedBrightness() const { return m_estimatedBrightness; }
    /// The ids of all volume and of all brightness activities.
    QUuid soundActivityID() const { return m_soundActivityID; }
    QUuid displayActivityID() const { return m_displayActivityID; }

Q_SIGNALS:
    void permissionStateChanged();

private:
    Subscription observeSetting();
    void applyEnabled(bool isEnabled);
    void setPermissionState(PermissionState state);
    void permissionTick();
    void refreshPermission();

    void startEventMonitor();
    void stopEventMonitor();
    void keyEvent(long data1);
    void afterKey(std::function<void()> action);
    void showVolume();
    void stepBrightness(double delta);

    void startLevelObservation();
    void stopLevelObservation();
    bool observeLevels();
    bool observeVolume();
    bool observeBrightness();

    void postVolume(const OutputLevel &volume);
    void postBrightness(double level);

    ActivityCoordinator &m_activities;
    SettingsStore &m_settings;
    const Ports m_ports;
    Scheduler &m_scheduler;
    PermissionState m_permissionState = PermissionState::disabled;
    /// Present from start to stop.
    Subscription m_settingsCancellable;
    Subscription m_activationObserver;
    Delay m_permissionTimer;
    std::optional<Poll> m_levelObservationTimer;
    Subscription m_globalEventMonitor;
    /// What keys will show when the system has done what they say.
    std::vector<Delay> m_keyActions;
    const QUuid m_soundActivityID = QUuid::createUuid();
    const QUuid m_displayActivityID = QUuid::createUuid();
    std::optional<double> m_estimatedBrightness;
    std::optional<OutputLevel> m_lastObservedVolume;
    std::optional<double> m_lastObservedBrightness;
    /// Of the setting's changes that are on their way.
    Lifetime m_settingsLifetime;
    Lifetime m_lifetime;
};

} // namespace brindle
