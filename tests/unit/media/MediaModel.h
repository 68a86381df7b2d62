#pragma once

#include "media/NowPlayingTrack.h"
#include "platform/AudioOutput.h"

#include <QSet>
#include <QStringList>

#include <deque>
#include <functional>
#include <map>
#include <optional>

namespace brindle {

/// What the rules of now playing come to, told once more and as plainly as can be: every tick happens, every
/// question is asked anew. It shares no code with the service, which must agree with it after each event.
///
/// Its surroundings are plain fields that the test sets as it scripts those of the service. Pictures are left
/// out, but for whether a track has artwork.
class MediaModel
{
public:
    // What it stands among

    double wallClock = 0;
    double uptime = 0;
    bool remoteCanRun = true;
    bool remoteRuns = false;
    std::map<QString, NowPlayingTrack> has;
    QSet<QString> running;
    /// The names of installed applications; one may have none.
    std::map<QString, std::optional<QString>> installed;
    std::optional<OutputLevel> output;

    // What can be seen of it

    std::optional<NowPlayingTrack> nowPlaying;
    double outputVolume = 0.62;
    bool supportsTransportControls = false;
    int announcements = 0;
    int volumeAnnouncements = 0;
    QStringList remoteCommands;
    QStringList applicationCommands;
    int polls = 0;
    QStringList sources() const;

    // What happens to it

    void start();
    void stop();
    void remoteReports(const std::optional<NowPlayingTrack> &report);
    void remoteIsSaidToRun(bool runs);
    void toggle();
    void seek(double seconds);
    void previous();
    void next();
    void holdQueue() { m_queueIsHeld = true; }
    void releaseQueue();
    void endTurn();
    void pass(double seconds);

private:
    struct Source
    {
        NowPlayingTrack track;
        double heardAt;
        double playedAt;
    };
    struct PressedPlay
    {
        QString source;
        bool plays;
        double from, at, until;
    };
    struct Sought
    {
        QString source, song;
        double to, at, until;
    };

    void take(const QList<NowPlayingTrack> &reports);
    void choose();
    void show(const NowPlayingTrack &track);
    void dropRemoteSource();
    void poll();
    void readVolume();
    void onQueue(std::function<void()> work);
    void sought(double to, double life);

    std::map<QString, Source> m_known;
    std::optional<PressedPlay> m_pressed;
    std::optional<Sought> m_seekUnderWay;
    std::optional<QString> m_remoteSource;
    bool m_pollUnderWay = false;
    std::optional<double> m_startedAt;
    double m_pollTicks = 0;
    double m_volumeTicks = 0;

    bool m_queueIsHeld = false;
    std::deque<std::function<void()>> m_queue;
    std::deque<std::function<void()>> m_laterThisTurn;
};

} // namespace brindle
