#pragma once

#include "foundation/ManualScheduler.h"
#include "media/SystemMediaService.h"
#include "platform/fake/FakeMedia.h"
#include "support/ScriptedFeeds.h"

#include <QSignalSpy>

#include <gmock/gmock.h>

namespace brindle {

inline const QString spotify = QStringLiteral("com.spotify.client");
inline const QString music = QStringLiteral("com.apple.Music");
inline const QString browser = QStringLiteral("org.example.browser");

/// The service between feeds that a test speaks for.
class SystemMedia : public testing::Test
{
protected:
    /// Ten seconds into a song of 200, now.
    NowPlayingTrack playing(const QString &source, const QString &title = QStringLiteral("Song")) const
    {
        NowPlayingTrack track;
        track.title = title;
        track.artist = QStringLiteral("Band");
        track.duration = 200;
        track.elapsed = 10;
        track.elapsedUpdatedAt = time.now();
        track.isPlaying = true;
        track.sourceName = source + QStringLiteral(" name");
        track.sourceBundleIdentifier = source;
        return track;
    }
    NowPlayingTrack paused(const QString &source, const QString &title = QStringLiteral("Song")) const
    {
        auto track = playing(source, title);
        track.isPlaying = false;
        track.playbackRate = 0;
        return track;
    }
    NowPlayingTrack playingAt(double elapsed, const QString &source) const
    {
        auto track = playing(source);
        track.elapsed = elapsed;
        return track;
    }
    static QImage picture(Qt::GlobalColor colour)
    {
        QImage image(4, 4, QImage::Format_RGB32);
        image.fill(colour);
        return image;
    }

    void startWithRemote()
    {
        service.start();
        time.runPosted();
    }
    /// The remote cannot run, so the applications are asked.
    void startWithoutRemote()
    {
        remote->canRun = false;
        startWithRemote();
    }
    /// The application runs, and has the track at the next poll.
    void has(const NowPlayingTrack &track)
    {
        const QString bundle = *track.sourceBundleIdentifier;
        workspace.running.insert(bundle);
        applications->has.insert_or_assign(bundle, track);
    }
    void quits(const QString &bundle) { workspace.running.remove(bundle); }
    /// Lets the fallback's next poll come.
    void poll() { time.advance(1.5); }

    const NowPlayingTrack &shown() const { return *service.nowPlaying(); }
    std::optional<QString> shownSource() const
    {
        return service.nowPlaying() ? shown().sourceBundleIdentifier : std::nullopt;
    }
    double position() const { return currentElapsed(shown(), time.now()); }
    bool knows(const QString &key) const { return service.sessions().contains(key); }

    ManualScheduler time;
    FakeAudioOutput audio;
    FakeWorkspace workspace;
    ScriptedRemote *remote = new ScriptedRemote(time);
    ScriptedApplications *applications = new ScriptedApplications;
    FakeSerialQueue *queue = new FakeSerialQueue(time);
    SystemMediaService service{std::unique_ptr<MediaRemote>(remote),
        std::unique_ptr<ApplicationMedia>(applications), std::unique_ptr<SerialQueue>(queue), audio,
        workspace, time};
    QSignalSpy announcements{&service, &MediaProvider::nowPlayingChanged};
};

} // namespace brindle
