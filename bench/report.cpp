// What one report of what plays costs the media service, beside what it costs to keep and compare a track at
// all; in microseconds, the best of several runs of each, in turn.

#include "media/SystemMediaService.h"
#include "platform/fake/FakePlatform.h"

#include <QElapsedTimer>

#include <algorithm>
#include <cstdio>
#include <limits>

using namespace brindle;

namespace {

/// A remote that only carries reports to the service.
class Wire final : public MediaRemote
{
public:
    UpdateHandler report;

    bool start(UpdateHandler onUpdate, RunningHandler /*onRunningChanged*/) override
    {
        report = std::move(onUpdate);
        return true;
    }
    void stop() override { }
    bool isRunning() const override { return true; }
    void send(const QStringList & /*arguments*/) override { }
    void seek(double /*seconds*/) override { }
};

class NoApplications final : public ApplicationMedia
{
public:
    QList<NowPlayingTrack> tracks(const QSet<QString> & /*running*/) override { return {}; }
    bool togglePlayback(const std::optional<QString> & /*bundle*/) override { return false; }
    bool seek(double /*seconds*/, const std::optional<QString> & /*bundle*/) override { return false; }
    bool isControllable(const std::optional<QString> & /*bundle*/) const override { return false; }
};

NowPlayingTrack song()
{
    NowPlayingTrack track;
    track.title = QStringLiteral("Slow Harbour");
    track.artist = QStringLiteral("The Lanterns");
    track.album = QStringLiteral("Lights");
    track.duration = 200;
    track.isPlaying = true;
    track.artwork = QImage(600, 600, QImage::Format_RGB32);
    track.sourceBundleIdentifier = QStringLiteral("org.example.player");
    return track;
}

template <typename Work> double microsecondsOf(Work work)
{
    constexpr int count = 50'000;
    QElapsedTimer clock;
    clock.start();
    for (int index = 0; index < count; ++index)
        work(index);
    return double(clock.nsecsElapsed()) / 1000 / count;
}

} // namespace

int main()
{
    FakePlatform machine;
    machine.applications.install(QStringLiteral("org.example.player"), QStringLiteral("Player"));
    auto *wire = new Wire;
    SystemMediaService service(std::unique_ptr<MediaRemote>(wire), std::make_unique<NoApplications>(),
        std::make_unique<FakeSerialQueue>(machine.time), machine.audio, machine.applications, machine.time);
    service.start();

    // Each report is at another position, so that each is news.
    std::optional<NowPlayingTrack> track = song();
    std::map<QString, NowPlayingTrack> kept;
    double report = std::numeric_limits<double>::max();
    double keeping = report;
    for (int run = 0; run < 9; ++run) {
        report = std::min(report, microsecondsOf([&](int index) {
            track->elapsed = index;
            wire->report(track);
        }));
        keeping = std::min(keeping, microsecondsOf([&](int index) {
            track->elapsed = index;
            NowPlayingTrack &last = kept[track->sessionKey()];
            if (last != *track)
                last = *track;
        }));
    }
    std::printf("%.3f %.3f\n", report, keeping);
}
