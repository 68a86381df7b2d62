#include "media/SystemMediaService.h"

#include "platform/AudioOutput.h"
#include "platform/Workspace.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace brindle {

namespace {

constexpr Poll::Rhythm fallbackRhythm{1.5, 0.3};
constexpr Poll::Rhythm volumeRhythm{0.16, 0.04};
/// What differs by less is noise.
constexpr double volumeThreshold = 0.005;

// Seconds for which a command's effect is shown against the reports.
constexpr double playbackLife = 2.0;
constexpr double seekLife = 3.0;
constexpr double previousTrackLife = 1.8;

/// Seconds after which a source that the polls no longer find does not play any more.
constexpr double playingGrace = 3.2;
/// Seconds after which it is forgotten.
constexpr double sessionLife = 7200;

// What the remote knows as commands.
QStringList command(const QString &number)
{
    return {QStringLiteral("send"), number};
}

bool goesBefore(const MediaSession &candidate, const MediaSession &best)
{
    if (candidate.track.isPlaying != best.track.isPlaying)
        return candidate.track.isPlaying;
    return candidate.track.isPlaying ? candidate.observedAt > best.observedAt
                                     : candidate.lastPlayedAt > best.lastPlayedAt;
}

} // namespace

SystemMediaService::SystemMediaService(std::unique_ptr<MediaRemote> remote,
    std::unique_ptr<ApplicationMedia> applicationFallback, std::unique_ptr<SerialQueue> fallbackQueue,
    AudioOutput &audioOutput, Workspace &workspace, Scheduler &scheduler, QObject *parent)
    : MediaProvider(parent)
    , m_audioOutput(audioOutput)
    , m_workspace(workspace)
    , m_scheduler(scheduler)
    , m_remote(std::move(remote))
    , m_applicationFallback(std::move(applicationFallback))
    , m_fallbackQueue(std::move(fallbackQueue))
{ }

void SystemMediaService::start()
{
    if (isStarted())
        return;
    m_supportsTransportControls = m_remote->start(
        m_lifetime.guard([this](const std::optional<NowPlayingTrack> &track) { remoteUpdated(track); }),
        m_lifetime.guard([this](bool running) { remoteRunningChanged(running); }));
    if (!m_supportsTransportControls || !m_remote->isRunning())
        refreshFallback();
    m_timer.emplace(
        m_scheduler, fallbackRhythm, [this] { return pollFallback(); },
        [this](std::function<void()> changed) {
            m_remoteEnded = std::move(changed);
            return Subscription([this] { m_remoteEnded = nullptr; });
        });
    pollVolume();
    m_volumeTimer.emplace(
        m_scheduler, volumeRhythm, [this] { return pollVolume(); },
        [this](std::function<void()> changed) { return m_audioOutput.notify(std::move(changed)); });
}

void SystemMediaService::stop()
{
    m_timer.reset();
    m_volumeTimer.reset();
    m_remote->stop();
    m_refreshInFlight = false;
}

int SystemMediaService::pollsPending() const
{
    return int(m_timer && !m_timer->isResting()) + int(m_volumeTimer && !m_volumeTimer->isResting());
}

// Reports

void SystemMediaService::remoteUpdated(const std::optional<NowPlayingTrack> &track)
{
    if (!track) {
        dropRemoteSession();
        return;
    }
    const QString key = track->sessionKey();
    if (m_remoteSessionKey && *m_remoteSessionKey != key)
        m_sessions.erase(*m_remoteSessionKey);
    m_remoteSessionKey = key;
    apply({*track});
}

void SystemMediaService::remoteRunningChanged(bool running)
{
    m_supportsTransportControls = running;
    if (running)
        return;
    dropRemoteSession();
    if (!m_remote->isRunning())
        refreshFallback();
    if (m_remoteEnded)
        m_remoteEnded();
}

void SystemMediaService::dropRemoteSession()
{
    if (!m_remoteSessionKey)
        return;
    m_sessions.erase(*std::exchange(m_remoteSessionKey, std::nullopt));
    selectNowPlaying();
}

void SystemMediaService::apply(const QList<NowPlayingTrack> &tracks)
{
    const Date now = m_scheduler.now();
    for (const NowPlayingTrack &track : tracks) {
        const QString key = track.sessionKey();
        const auto existing = m_sessions.find(key);
        MediaSession session = merged(track, existing == m_sessions.end() ? nullptr : &existing->second, now);
        m_sessions.insert_or_assign(key, std::move(session));
    }
    selectNowPlaying();
}

MediaSession SystemMediaService::merged(const NowPlayingTrack &track, const MediaSession *existing, Date now)
{
    MediaSession session{track, now, now, {}};
    if (existing)
        session.application = existing->application;
    fillSource(session);
    // Sources report artwork late or once, so it stays until there is other.
    if (existing && !session.track.artwork)
        session.track.artwork = existing->track.artwork;
    if (existing && !session.track.artworkURL)
        session.track.artworkURL = existing->track.artworkURL;
    applyOverrides(session.track, now);
    if (existing && !session.track.isPlaying)
        session.lastPlayedAt = existing->lastPlayedAt;
    return session;
}

void SystemMediaService::fillSource(MediaSession &session) const
{
    NowPlayingTrack &track = session.track;
    if (track.sourceIcon || !track.sourceBundleIdentifier)
        return;
    if (!session.application) {
        const auto url = m_workspace.urlForApplication(*track.sourceBundleIdentifier);
        if (!url)
            return;
        session.application =
            SourceApplication{m_workspace.icon(url->toLocalFile()), m_workspace.localizedName(*url)};
    }
    track.sourceIcon = session.application->icon;
    if (!track.sourceName)
        track.sourceName = session.application->name;
}

void SystemMediaService::applyOverrides(NowPlayingTrack &track, Date now)
{
    const QString key = track.sessionKey();
    if (m_playbackOverride && m_playbackOverride->key == key) {
        // It lasts its whole life, also once the source agrees: an older report may still be on its way.
        if (now >= m_playbackOverride->expiresAt)
            m_playbackOverride.reset();
        else
            m_playbackOverride->impose(track, now);
    }
    if (m_positionOverride && m_positionOverride->key == key) {
        if (m_positionOverride->isSettledBy(track, now))
            m_positionOverride.reset();
        else
            m_positionOverride->impose(track, now);
    }
}

void SystemMediaService::selectNowPlaying()
{
    const MediaSession *best = nullptr;
    for (const auto &[key, session] : m_sessions) {
        if (!best || goesBefore(session, *best))
            best = &session;
    }
    if (best ? m_nowPlaying == best->track : !m_nowPlaying)
        return;
    m_nowPlaying = best ? std::optional(best->track) : std::nullopt;
    Q_EMIT nowPlayingChanged();
}

void SystemMediaService::pruneSessions()
{
    const Date now = m_scheduler.now();
    for (auto &[key, session] : m_sessions) {
        if (now - session.observedAt > playingGrace)
            session.track.isPlaying = false;
    }
    std::erase_if(
        m_sessions, [now](const auto &entry) { return now - entry.second.observedAt >= sessionLife; });
    selectNowPlaying();
    m_refreshInFlight = false;
}

// Polls

/// Has `work` run with the fallback on its queue and, if the service still stands then, `done` with the
/// result on the main thread.
template <typename Work, typename Done> void SystemMediaService::askFallback(Work work, Done done)
{
    m_fallbackQueue->post([&fallback = *m_applicationFallback, &scheduler = m_scheduler,
                              work = std::move(work), done = m_lifetime.guard(std::move(done))] {
        scheduler.post([result = work(fallback), done]() mutable { done(result); });
    });
}

void SystemMediaService::refreshFallback()
{
    if (std::exchange(m_refreshInFlight, true))
        return;
    askFallback([running = m_workspace.runningApplications()](
                    ApplicationMedia &fallback) { return fallback.tracks(running); },
        [this](const QList<NowPlayingTrack> &tracks) {
            apply(tracks);
            pruneSessions();
        });
}

/// While the remote runs there is nothing to do, and the poll rests until the remote ends.
bool SystemMediaService::pollFallback()
{
    if (m_remote->isRunning())
        return false;
    refreshFallback();
    return true;
}

bool SystemMediaService::pollVolume()
{
    const auto output = m_audioOutput.level();
    if (!output)
        return false;
    const double level = output->muted ? 0 : std::clamp(output->level, 0.0, 1.0);
    if (!(std::abs(level - m_outputVolume) > volumeThreshold))
        return false;
    m_outputVolume = level;
    Q_EMIT outputVolumeChanged();
    return true;
}

// Commands

void SystemMediaService::togglePlayback()
{
    if (!m_nowPlaying)
        return;
    const Date now = m_scheduler.now();
    const bool wasPlaying = m_nowPlaying->isPlaying;
    NowPlayingTrack track = *m_nowPlaying;
    track.elapsed = currentElapsed(track, now);
    track.elapsedUpdatedAt = now;
    track.isPlaying = !wasPlaying;
    track.playbackRate = wasPlaying ? 0 : std::max(1.0, track.playbackRate);
    m_playbackOverride =
        PlaybackOverride{track.sessionKey(), track.isPlaying, *track.elapsed, now, now + playbackLife};
    present(track);

    if (m_remote->isRunning()) {
        m_remote->send(command(wasPlaying ? QStringLiteral("1") : QStringLiteral("0")));
    } else if (m_applicationFallback->isControllable(track.sourceBundleIdentifier)) {
        askFallback([bundle = track.sourceBundleIdentifier](
                        ApplicationMedia &fallback) { return fallback.togglePlayback(bundle); },
            [this](bool) {
                if (!m_remote->isRunning())
                    refreshFallback();
            });
    }
}

void SystemMediaService::seek(double seconds)
{
    if (!m_nowPlaying)
        return;
    const NowPlayingTrack track = *m_nowPlaying;
    const double atLeast0 = std::max(0.0, seconds);
    const double target = track.duration ? std::min(atLeast0, *track.duration) : atLeast0;
    overridePosition(target, seekLife);

    // Players that take both ways are told both ways.
    if (m_remote->isRunning())
        m_remote->seek(target);
    if (m_applicationFallback->isControllable(track.sourceBundleIdentifier)) {
        askFallback([target, bundle = track.sourceBundleIdentifier](
                        ApplicationMedia &fallback) { return fallback.seek(target, bundle); },
            [](bool) {});
    }
}

void SystemMediaService::previousTrack()
{
    if (!m_nowPlaying)
        return;
    overridePosition(0, previousTrackLife);
    if (m_remote->isRunning())
        m_remote->send(command(QStringLiteral("5")));
}

void SystemMediaService::nextTrack()
{
    if (m_remote->isRunning())
        m_remote->send(command(QStringLiteral("4")));
}

void SystemMediaService::overridePosition(double target, double life)
{
    const Date now = m_scheduler.now();
    NowPlayingTrack track = *m_nowPlaying;
    track.elapsed = target;
    track.elapsedUpdatedAt = now;
    m_positionOverride =
        PositionOverride{track.sessionKey(), track.presentationID(), target, now, now + life};
    present(track);
}

/// Shows what a command has just made of the track, and keeps it with the track's source.
void SystemMediaService::present(const NowPlayingTrack &track)
{
    const auto found = m_sessions.find(track.sessionKey());
    if (found != m_sessions.end()) {
        MediaSession &session = found->second;
        session.track = track;
        session.observedAt = track.elapsedUpdatedAt;
        if (track.isPlaying && !m_nowPlaying->isPlaying)
            session.lastPlayedAt = track.elapsedUpdatedAt;
    }
    m_nowPlaying = track;
    Q_EMIT nowPlayingChanged(); // also when only the time of the position is new
}

} // namespace brindle
