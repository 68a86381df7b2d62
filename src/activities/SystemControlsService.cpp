#include "activities/SystemControlsService.h"

#include "activities/ActivityCoordinator.h"
#include "core/SettingsStore.h"
#include "platform/DisplayBrightness.h"
#include "platform/HostApplication.h"
#include "platform/InputMonitoring.h"
#include "platform/MediaKeys.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace brindle {

namespace {

constexpr Poll::Rhythm observerRhythm{.interval = 0.15, .tolerance = 0.025};
/// Seconds between two looks for a permission that was asked for, and their tolerance.
constexpr double permissionInterval = 1;
constexpr double permissionTolerance = 0.2;
/// Seconds from a key until the system has done what it says.
constexpr double keyDelay = 0.045;
/// One sixteenth, which is what the brightness keys move by.
constexpr double brightnessStep = 0.0625;
constexpr double unknownBrightness = 0.5;
constexpr double displayDuration = 1.45;

/// Changes up to this are noise. The hair above it is what subtracting two of these numbers may add.
constexpr double noise = 0.003 + 1e-9;

bool isChange(double before, double after)
{
    return std::abs(after - before) > noise;
}

double clamped(double level)
{
    return std::clamp(level, 0.0, 1.0);
}

QString volumeSymbol(const OutputLevel &volume)
{
    if (volume.muted || volume.level <= 0.001)
        return QStringLiteral("speaker.slash.fill");
    if (volume.level < 0.34)
        return QStringLiteral("speaker.wave.1.fill");
    if (volume.level < 0.67)
        return QStringLiteral("speaker.wave.2.fill");
    return QStringLiteral("speaker.wave.3.fill");
}

SystemActivity levelActivity(
    const QUuid &id, Date now, const QString &title, const QString &symbol, double progress)
{
    SystemActivity activity;
    activity.id = id;
    activity.type = ActivityType::systemControl;
    activity.priority = ActivityPriority::systemControl;
    activity.createdAt = now;
    activity.duration = displayDuration;
    activity.content.title = title;
    activity.content.symbol = symbol;
    activity.content.progress = clamped(progress);
    return activity;
}

} // namespace

SystemControlsService::SystemControlsService(ActivityCoordinator &activities, SettingsStore &settings,
    const Ports &ports, Scheduler &scheduler, QObject *parent)
    : QObject(parent)
    , m_activities(activities)
    , m_settings(settings)
    , m_ports(ports)
    , m_scheduler(scheduler)
{ }

void SystemControlsService::start()
{
    if (m_settingsCancellable)
        return;
    m_activationObserver =
        m_ports.application.notifyActivation(m_lifetime.guard([this] { refreshPermission(); }));
    m_settingsCancellable = observeSetting();
    applyEnabled(m_settings.systemControlsEnabled());
}

void SystemControlsService::stop()
{
    m_settingsCancellable.reset();
    m_settingsLifetime = Lifetime();
    m_activationObserver.reset();
    applyEnabled(false);
}

// Acts on the turn after a change, with the value that it had then.
Subscription SystemControlsService::observeSetting()
{
    const auto connection = connect(&m_settings, &SettingsStore::systemControlsEnabledChanged, this, [this] {
        m_scheduler.post(m_settingsLifetime.guard(
            [this, isEnabled = m_settings.systemControlsEnabled()] { applyEnabled(isEnabled); }));
    });
    return Subscription([connection] { disconnect(connection); });
}

void SystemControlsService::applyEnabled(bool isEnabled)
{
    if (!isEnabled) {
        m_permissionTimer.cancel();
        stopLevelObservation();
        stopEventMonitor();
        m_keyActions.clear();
        setPermissionState(PermissionState::disabled);
        return;
    }
    startLevelObservation();
    if (m_ports.inputMonitoring.preflightListenEventAccess())
        startEventMonitor();
    else
        setPermissionState(PermissionState::permissionRequired);
}

int SystemControlsService::delaysPending() const
{
    return int(m_permissionTimer.isPending())
        + int(m_levelObservationTimer && !m_levelObservationTimer->isResting())
        + int(std::ranges::count_if(m_keyActions, &Delay::isPending));
}

// Permission

void SystemControlsService::setPermissionState(PermissionState state)
{
    if (std::exchange(m_permissionState, state) != state)
        Q_EMIT permissionStateChanged();
}

void SystemControlsService::requestPermission()
{
    if (!m_settings.systemControlsEnabled())
        return;
    if (m_ports.inputMonitoring.preflightListenEventAccess()) {
        startEventMonitor();
        return;
    }
    stopEventMonitor(); // it may stem from a permission that was withdrawn
    setPermissionState(PermissionState::requesting);
    m_ports.inputMonitoring.requestListenEventAccess();
    m_permissionTimer =
        m_scheduler.every(permissionInterval, permissionTolerance, [this] { permissionTick(); });
}

void SystemControlsService::permissionTick()
{
    if (!m_settings.systemControlsEnabled()) {
        m_permissionTimer.cancel();
    } else if (m_ports.inputMonitoring.preflightListenEventAccess()) {
        m_permissionTimer.cancel();
        startEventMonitor();
    }
}

// A person who withdrew the permission, or granted it, did so elsewhere and comes back from there.
void SystemControlsService::refreshPermission()
{
    if (!m_settings.systemControlsEnabled())
        return;
    if (m_ports.inputMonitoring.preflightListenEventAccess()) {
        startEventMonitor();
    } else {
        stopEventMonitor();
        setPermissionState(PermissionState::permissionRequired);
    }
}

// Keys

void SystemControlsService::startEventMonitor()
{
    stopEventMonitor();
    // On whatever thread the event comes, it is only passed on.
    m_globalEventMonitor = m_ports.mediaKeys.addGlobalMonitor(
        [&scheduler = m_scheduler, onMain = m_lifetime.guard([this](long data1) { keyEvent(data1); })](
            long data1) { scheduler.post([onMain, data1]() mutable { onMain(data1); }); });
    setPermissionState(m_globalEventMonitor ? PermissionState::authorized : PermissionState::unavailable);
}

void SystemControlsService::stopEventMonitor()
{
    m_globalEventMonitor.reset();
}

void SystemControlsService::keyEvent(long data1)
{
    if (!m_globalEventMonitor || !isMediaKeyDown(data1))
        return;
    switch (mediaKeyCode(data1)) {
    case MediaKeyCode::soundUp:
    case MediaKeyCode::soundDown:
    case MediaKeyCode::mute:
        afterKey([this] { showVolume(); });
        break;
    case MediaKeyCode::brightnessUp:
        afterKey([this] { stepBrightness(brightnessStep); });
        break;
    case MediaKeyCode::brightnessDown:
        afterKey([this] { stepBrightness(-brightnessStep); });
        break;
    default:
        break;
    }
}

void SystemControlsService::afterKey(std::function<void()> action)
{
    std::erase_if(m_keyActions, [](const Delay &delay) { return !delay.isPending(); });
    m_keyActions.push_back(m_scheduler.after(keyDelay, std::move(action)));
}

// Also where the key changed nothing: a press at full volume shows the full bar.
void SystemControlsService::showVolume()
{
    if (const auto volume = m_ports.audioOutput.level())
        postVolume(*volume);
}

void SystemControlsService::stepBrightness(double delta)
{
    const double guess = clamped(m_estimatedBrightness.value_or(unknownBrightness) + delta);
    m_estimatedBrightness = m_ports.displayBrightness.brightness().value_or(guess);
    postBrightness(*m_estimatedBrightness);
}

// Levels

void SystemControlsService::startLevelObservation()
{
    stopLevelObservation();
    m_lastObservedVolume = m_ports.audioOutput.level();
    m_lastObservedBrightness = m_ports.displayBrightness.brightness();
    m_levelObservationTimer.emplace(
        m_scheduler, observerRhythm, [this] { return observeLevels(); },
        [this](const std::function<void()> &changed) -> Subscription {
            const auto both = std::make_shared<std::pair<Subscription, Subscription>>(
                m_ports.audioOutput.notify(changed), m_ports.displayBrightness.notify(changed));
            // Where either is not announced, both are read always.
            if (!both->first || !both->second)
                return {};
            return Subscription([both] { *both = {}; });
        });
}

void SystemControlsService::stopLevelObservation()
{
    m_levelObservationTimer.reset();
    m_lastObservedVolume.reset();
    m_lastObservedBrightness.reset();
}

// True when anything moved, be it within the noise.
bool SystemControlsService::observeLevels()
{
    const bool volumeMoved = observeVolume();
    const bool brightnessMoved = observeBrightness();
    return volumeMoved || brightnessMoved;
}

bool SystemControlsService::observeVolume()
{
    const auto volume = m_ports.audioOutput.level();
    if (!volume || volume == m_lastObservedVolume)
        return false;
    const auto before = std::exchange(m_lastObservedVolume, volume);
    if (before && (isChange(before->level, volume->level) || before->muted != volume->muted))
        postVolume(*volume);
    return true;
}

bool SystemControlsService::observeBrightness()
{
    const auto brightness = m_ports.displayBrightness.brightness();
    if (!brightness)
        return false;
    m_estimatedBrightness = brightness;
    if (brightness == m_lastObservedBrightness)
        return false;
    const auto before = std::exchange(m_lastObservedBrightness, brightness);
    if (before && isChange(*before, *brightness))
        postBrightness(*brightness);
    return true;
}

// Activities

void SystemControlsService::postVolume(const OutputLevel &volume)
{
    m_activities.post(levelActivity(m_soundActivityID, m_scheduler.now(), QStringLiteral("Sound"),
        volumeSymbol(volume), volume.muted ? 0 : volume.level));
}

void SystemControlsService::postBrightness(double level)
{
    m_activities.post(levelActivity(m_displayActivityID, m_scheduler.now(), QStringLiteral("Display"),
        QStringLiteral("sun.max.fill"), level));
}

} // namespace brindle
