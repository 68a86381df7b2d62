#pragma once

#include "foundation/Lifetime.h"
#include "foundation/Poll.h"
#include "foundation/SerialQueue.h"
#include "media/ApplicationMedia.h"
#include "media/MediaProvider.h"
#include "media/MediaRemote.h"
#include "media/MediaSession.h"

#include <map>
#include <memory>
#include <optional>

namespace brindle {

class AudioOutput;
class Workspace;

/// Decides what is shown as now playing, of all that reports to play something, and how loud it is.
///
/// There is one session for each source, and `nowPlaying` is the track of one of them, absent exactly when
/// there is none. What plays goes before what is paused; then the latest goes first. A command shows its
/// effect at once, and for a short while keeps reports from before it from undoing that.
///
/// Tracks come from the remote; while that does not run, the applications are asked in turns. Main thread;
/// what the fallback queue runs never touches the service.
class SystemMediaService final : public MediaProvider
{
    Q_OBJECT

public:
    /// By the key of their tracks. A tie between sessions goes to the first in this order, so that it is
    /// decided alike each time.
    using Sessions = std::map<QString, MediaSession>;

    SystemMediaService(std::unique_ptr<MediaRemote> remote,
        std::unique_ptr<ApplicationMedia> applicationFallback, std::unique_ptr<SerialQueue> fallbackQueue,
        AudioOutput &audioOutput, Workspace &workspace, Scheduler &scheduler, QObject *parent = nullptr);

    /// A remote that ends later is not started again until the next stop and start.
    void start() override;
    /// What is known, and shown, stays.
    void stop() override;
    bool isStarted() const { return m_timer.has_value(); }

    const std::optional<NowPlayingTrack> &nowPlaying() const override { return m_nowPlaying; }
    double outputVolume() const override { return m_outputVolume; }
    /// Whether the remote runs, as it last told.
    bool supportsTransportControls() const { return m_supportsTransportControls; }

    void togglePlayback() override;
    void seek(double seconds) override;
    void previousTrack() override;
    void nextTrack() override;

    const Sessions &sessions() const { return m_sessions; }
    /// The one session that the remote feeds.
    const std::optional<QString> &remoteSessionKey() const { return m_remoteSessionKey; }
    bool isRefreshInFlight() const { return m_refreshInFlight; }
    /// How many of the polls wait for their next moment.
    int pollsPending() const;

private:
    void remoteUpdated(const std::optional<NowPlayingTrack> &track);
    void remoteRunningChanged(bool running);
    void dropRemoteSession();

    void apply(const QList<NowPlayingTrack> &tracks);
    MediaSession merged(const NowPlayingTrack &track, const MediaSession *existing, Date now);
    void fillSource(MediaSession &session) const;
    void applyOverrides(NowPlayingTrack &track, Date now);
    void selectNowPlaying();
    void pruneSessions();

    void refreshFallback();
    template <typename Work, typename Done> void askFallback(Work work, Done done);
    bool pollFallback();
    bool pollVolume();

    void overridePosition(double target, double life);
    void present(const NowPlayingTrack &track);

    AudioOutput &m_audioOutput;
    Workspace &m_workspace;
    Scheduler &m_scheduler;

    std::optional<NowPlayingTrack> m_nowPlaying;
    double m_outputVolume = 0.62;
    bool m_supportsTransportControls = false;
    Sessions m_sessions;
    std::optional<PlaybackOverride> m_playbackOverride;
    std::optional<PositionOverride> m_positionOverride;
    std::optional<QString> m_remoteSessionKey;
    bool m_refreshInFlight = false;

    const std::unique_ptr<MediaRemote> m_remote;
    const std::unique_ptr<ApplicationMedia> m_applicationFallback;
    // After the fallback, so that it goes first: what runs on it uses the fallback.
    const std::unique_ptr<SerialQueue> m_fallbackQueue;
    /// Wakes the fallback's poll once the remote has ended.
    std::function<void()> m_remoteEnded;
    std::optional<Poll> m_timer;
    std::optional<Poll> m_volumeTimer;
    Lifetime m_lifetime;
};

} // namespace brindle
