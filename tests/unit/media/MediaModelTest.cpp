#include "unit/media/MediaModel.h"

#include "foundation/ManualScheduler.h"
#include "media/SystemMediaService.h"
#include "platform/fake/FakeMedia.h"
#include "support/ScriptedFeeds.h"
#include "support/Trails.h"

#include <QSignalSpy>

#include <array>
#include <cmath>
#include <gtest/gtest.h>

namespace brindle {
namespace {

enum class Act {
    report,
    reportNothing,
    endRemote,
    startOrStop,
    start,
    toggle,
    seek,
    previous,
    next,
    play,
    quit,
    holdQueue,
    releaseQueue,
    turnVolume,
    setClock,
    waitLong,
};

using Event = trails::Event<Act>;
using Trail = trails::Trail<Act>;
using trails::Chance;

constexpr std::array table{
    trails::Habit{Act::report, 30, "the remote reports"},
    trails::Habit{Act::reportNothing, 3, "the remote reports nothing"},
    trails::Habit{Act::endRemote, 3, "the remote ends"},
    trails::Habit{Act::startOrStop, 3, "start or stop"},
    trails::Habit{Act::start, 4, "start"},
    trails::Habit{Act::toggle, 12, "press play or pause"},
    trails::Habit{Act::seek, 10, "seek"},
    trails::Habit{Act::previous, 4, "go to the previous track"},
    trails::Habit{Act::next, 2, "go to the next track"},
    trails::Habit{Act::play, 16, "an application has a track"},
    trails::Habit{Act::quit, 4, "an application quits"},
    trails::Habit{Act::holdQueue, 2, "a script hangs"},
    trails::Habit{Act::releaseQueue, 5, "scripts run"},
    trails::Habit{Act::turnVolume, 6, "turn the volume"},
    trails::Habit{Act::setClock, 2, "set the clock"},
    trails::Habit{Act::waitLong, 1, "wait for long"},
};
const std::span<const trails::Habit<Act>> habits = table;

/// All times are on this grid, where sums are exact, so that the model's are the service's.
constexpr double grid = 1.0 / 64;
/// What lies between the starts and everything else, so that no tick falls together with an event.
constexpr double besideTheGrid = 1.0 / 1024;

double onGrid(double value)
{
    return std::round(value / grid) * grid;
}

template <typename Value, std::size_t count>
Value pick(Chance &chance, const std::array<Value, count> &values)
{
    return values[chance.below(unsigned(count))];
}

const std::array<QString, 5> applications{QStringLiteral("com.spotify.client"),
    QStringLiteral("com.apple.Music"), QStringLiteral("org.example.one"), QStringLiteral("org.example.two"),
    QStringLiteral("org.example.three")};

/// The service among its fakes and the model among its fields, living through the same events.
class World
{
public:
    World()
    {
        workspace.install(applications[0], QStringLiteral("Spotify"));
        workspace.install(applications[2], QStringLiteral("One"));
        workspace.install(applications[3], QString());
        workspace.installed[applications[3]].name.reset();
        for (auto found = workspace.installed.cbegin(); found != workspace.installed.cend(); ++found)
            model.installed.emplace(found.key(), found->name);
        model.wallClock = time.now().secondsSince1970();
        start(true);
    }

    void apply(const Event &event);
    void endTurn()
    {
        time.runPosted();
        model.endTurn();
    }
    void pass(double seconds)
    {
        time.advance(seconds);
        model.pass(seconds);
    }
    /// What the two do not agree on.
    std::optional<QString> disagreement();

private:
    void start(bool remoteCanRun);
    void stop();
    void report(const std::optional<NowPlayingTrack> &track)
    {
        remote->report(track);
        model.remoteReports(track);
    }
    void endRemote(const Event &event);
    void play(Chance chance);
    void quit(const QString &application);
    void turnVolume(Chance chance);
    void setClock(double seconds);
    NowPlayingTrack randomTrack(Chance &chance) const;
    void placeNearWhatIsShown(NowPlayingTrack &track, Chance &chance) const;

    ManualScheduler time;
    FakeAudioOutput audio;
    FakeWorkspace workspace;
    ScriptedRemote *remote = new ScriptedRemote(time);
    ScriptedApplications *fallback = new ScriptedApplications;
    FakeSerialQueue *queue = new FakeSerialQueue(time);
    SystemMediaService service{std::unique_ptr<MediaRemote>(remote),
        std::unique_ptr<ApplicationMedia>(fallback), std::unique_ptr<SerialQueue>(queue), audio, workspace,
        time};
    QSignalSpy announcements{&service, &MediaProvider::nowPlayingChanged};
    QSignalSpy volumeAnnouncements{&service, &MediaProvider::outputVolumeChanged};
    MediaModel model;
};

void World::apply(const Event &event)
{
    Chance chance(std::uint64_t(event.choice) << 32 ^ std::uint64_t(event.x * 0x1p32));
    const auto both = [this](auto ofService, auto ofModel) {
        (service.*ofService)();
        (model.*ofModel)();
    };
    switch (event.act) {
    case Act::report:
        return report(randomTrack(chance));
    case Act::reportNothing:
        return report(std::nullopt);
    case Act::endRemote:
        return endRemote(event);
    case Act::startOrStop:
        return service.isStarted() ? stop() : start(event.choice % 2 == 0);
    case Act::start:
        return start(event.choice % 2 == 0);
    case Act::toggle:
        return both(&SystemMediaService::togglePlayback, &MediaModel::toggle);
    case Act::seek: {
        const double seconds = onGrid(event.x * 260 - 20);
        service.seek(seconds);
        return model.seek(seconds);
    }
    case Act::previous:
        return both(&SystemMediaService::previousTrack, &MediaModel::previous);
    case Act::next:
        return both(&SystemMediaService::nextTrack, &MediaModel::next);
    case Act::play:
        return play(chance);
    case Act::quit:
        return quit(pick(chance, applications));
    case Act::holdQueue:
        queue->hold();
        return model.holdQueue();
    case Act::releaseQueue:
        queue->release();
        return model.releaseQueue();
    case Act::turnVolume:
        return turnVolume(chance);
    case Act::setClock:
        return setClock(pick(chance, std::array{-7200.0, -60.0, -1.5, 2.0, 60.0, 3600.0, 7300.0}));
    case Act::waitLong:
        // The service rests while its remote runs, so hours cost nothing then.
        return pass(remote->isRunning() ? 7300 : 30);
    }
}

void World::start(bool remoteCanRun)
{
    pass(besideTheGrid);
    remote->canRun = remoteCanRun;
    model.remoteCanRun = remoteCanRun;
    service.start();
    model.start();
    pass(besideTheGrid);
}

void World::stop()
{
    service.stop();
    model.stop();
}

// Who hears of its end a little later may command it meanwhile.
void World::endRemote(const Event &event)
{
    if (event.choice % 4 != 0) {
        remote->die();
        model.remoteRuns = false;
    }
    if (event.choice % 8 > 4) {
        service.togglePlayback();
        model.toggle();
    }
    remote->tellOfItsEnd();
    model.remoteReports(std::nullopt);
    model.remoteIsSaidToRun(model.remoteRuns);
}

void World::play(Chance chance)
{
    NowPlayingTrack track = randomTrack(chance);
    track.sourceIcon.reset();
    if (!track.sourceBundleIdentifier)
        track.sourceBundleIdentifier = pick(chance, applications);
    const QString application = *track.sourceBundleIdentifier;
    fallback->has.insert_or_assign(application, track);
    model.has.insert_or_assign(application, track);
    workspace.running.insert(application);
    model.running.insert(application);
}

void World::quit(const QString &application)
{
    workspace.running.remove(application);
    model.running.remove(application);
}

void World::turnVolume(Chance chance)
{
    std::optional<OutputLevel> level;
    if (chance.below(8) != 0)
        level = OutputLevel{chance.fraction() * 1.4 - 0.2, chance.below(4) == 0};
    if (level && chance.below(2) == 0)
        level->level = service.outputVolume() + pick(chance, std::array{-0.004, 0.004, 0.006});
    model.output = level;
    audio.set(level);
}

void World::setClock(double seconds)
{
    time.jumpWallClock(seconds);
    model.wallClock += seconds;
}

NowPlayingTrack World::randomTrack(Chance &chance) const
{
    using Text = std::optional<QString>;
    using Number = std::optional<double>;
    NowPlayingTrack track;
    track.title = pick(chance, std::array{QStringLiteral("Red"), QStringLiteral("Green")});
    track.artist = pick(chance, std::array<Text, 3>{std::nullopt, QStringLiteral("Ann"), QString()});
    track.album = pick(chance, std::array<Text, 3>{std::nullopt, std::nullopt, QStringLiteral("Colours")});
    track.duration = pick(chance, std::array<Number, 4>{std::nullopt, 0.5, 200.0, 200.0});
    track.elapsed = chance.below(6) == 0 ? std::nullopt : std::optional(onGrid(chance.fraction() * 210 - 5));
    track.elapsedUpdatedAt = time.now() - pick(chance, std::array{0.0, 0.0, 0.5, 5.0, 400.0, -3.0});
    track.isPlaying = chance.below(2) == 0;
    track.playbackRate = pick(chance, std::array{1.0, 1.0, 0.0, 0.5, 1.25, 2.0, -1.0});
    if (chance.below(4) == 0)
        track.artwork = QImage(1, 1, QImage::Format_RGB32);
    if (chance.below(4) == 0)
        track.artworkFingerprint = chance.below(2);
    if (chance.below(6) == 0)
        track.artworkURL =
            QUrl(QStringLiteral("https://example.org/%1.png").arg(QString::number(chance.below(2))));
    if (chance.below(8) != 0)
        track.sourceBundleIdentifier = pick(chance, applications);
    if (chance.below(2) == 0)
        track.sourceName =
            pick(chance, std::array{QStringLiteral("Radio"), QStringLiteral("org.example.one")});
    if (chance.below(4) == 0)
        track.sourceIcon = QImage(1, 1, QImage::Format_RGB32);
    if (service.nowPlaying() && chance.below(2) == 0)
        placeNearWhatIsShown(track, chance);
    return track;
}

/// The same song from the same source, mostly about where it is.
void World::placeNearWhatIsShown(NowPlayingTrack &track, Chance &chance) const
{
    const bool playing = track.isPlaying;
    const auto artwork = track.artwork;
    track = *service.nowPlaying();
    track.artwork = artwork;
    if (chance.below(4) == 0)
        return;
    track.elapsed = onGrid(track.elapsed.value_or(0))
        + pick(chance, std::array{0.0, 0.5, -1.0, 1.25, -1.25, 1.265625, 2.0, -3.0});
    track.elapsedUpdatedAt = time.now();
    track.isPlaying = playing;
    if (playing && track.playbackRate == 0)
        track.playbackRate = 1;
}

/// In all fields, also those that a viewer would not notice; but for pictures.
bool areAlike(const NowPlayingTrack &one, const NowPlayingTrack &other)
{
    const auto fields = [](const NowPlayingTrack &track) {
        return std::tie(track.title, track.artist, track.album, track.duration, track.elapsed,
            track.elapsedUpdatedAt, track.isPlaying, track.playbackRate, track.artworkFingerprint,
            track.artworkURL, track.sourceName, track.sourceBundleIdentifier);
    };
    return fields(one) == fields(other) && one.artwork.has_value() == other.artwork.has_value();
}

bool areAlike(const std::optional<NowPlayingTrack> &one, const std::optional<NowPlayingTrack> &other)
{
    return one && other ? areAlike(*one, *other) : one.has_value() == other.has_value();
}

QString wordsOf(const std::optional<NowPlayingTrack> &track)
{
    if (!track)
        return QStringLiteral("nothing");
    const auto text = [](const std::optional<QString> &value) {
        return value ? *value : QStringLiteral("absent");
    };
    const auto number = [](const std::optional<double> &value) {
        return value ? QString::number(*value, 'g', 17) : QStringLiteral("absent");
    };
    const QString url = track->artworkURL ? track->artworkURL->toString() : QStringLiteral("absent");
    return QStringList{track->title, text(track->artist), text(track->album), number(track->duration),
        number(track->elapsed), number(track->elapsedUpdatedAt.secondsSince1970()),
        track->isPlaying ? QStringLiteral("playing") : QStringLiteral("paused"), number(track->playbackRate),
        track->artwork ? QStringLiteral("artwork") : QStringLiteral("no artwork"),
        number(track->artworkFingerprint), url, text(track->sourceName), text(track->sourceBundleIdentifier)}
        .join(QStringLiteral(", "));
}

std::optional<QString> World::disagreement()
{
    std::optional<QString> complaint;
    const auto compare = [&complaint](
                             const char *what, const auto &ofService, const auto &ofModel, auto words) {
        if (!complaint && ofService != ofModel)
            complaint = QStringLiteral("%1: the service has '%2' and the model '%3'")
                            .arg(QLatin1StringView(what), words(ofService), words(ofModel));
    };
    const auto number = [](double value) { return QString::number(value); };
    const auto list = [](const QStringList &values) { return values.join(u' '); };

    if (!areAlike(service.nowPlaying(), model.nowPlaying))
        compare("shown", wordsOf(service.nowPlaying()), wordsOf(model.nowPlaying),
            [](auto words) { return words; });
    QStringList sources;
    for (const auto &[key, session] : service.sessions())
        sources.append(key);
    compare("sources", sources, model.sources(), list);
    compare("told the remote", std::exchange(remote->commands, {}), std::exchange(model.remoteCommands, {}),
        list);
    compare("told applications", std::exchange(fallback->commands, {}),
        std::exchange(model.applicationCommands, {}), list);
    compare("announcements", announcements.count(), model.announcements, number);
    compare("polls", fallback->polls, model.polls, number);
    compare(
        "transport controls", service.supportsTransportControls(), model.supportsTransportControls, number);
    compare("volume", service.outputVolume(), model.outputVolume, number);
    compare("volume announcements", volumeAnnouncements.count(), model.volumeAnnouncements, number);
    return complaint;
}

std::optional<QString> live(World &world, const Event &event)
{
    world.apply(event);
    if (const auto complaint = world.disagreement())
        return complaint;
    if (event.endsTurn)
        world.endTurn();
    if (const auto complaint = world.disagreement())
        return complaint;
    // Long ones are of half seconds, so that what ends after some seconds is met at the very moment.
    if (const double pause = event.pause > 1 ? std::round(event.pause * 2) / 2 : onGrid(event.pause);
        pause > 0)
        world.pass(pause);
    return world.disagreement();
}

std::optional<trails::Failure> play(const Trail &trail)
{
    World world;
    for (std::size_t index = 0; index < trail.size(); ++index) {
        if (const auto complaint = live(world, trail[index]))
            return trails::Failure{index, *complaint};
    }
    return std::nullopt;
}

TEST(SystemMediaModel, ServiceAndModelAgreeOnRandomDays)
{
    constexpr std::size_t dayLength = 2000;
    constexpr std::size_t usualEvents = 100'000;
    constexpr std::size_t eventsOfLongRuns = 5'000'000;
    const std::size_t events = trails::numberFrom("BRINDLE_SIMULATION_EVENTS",
        qEnvironmentVariableIsSet("BRINDLE_LONG") ? eventsOfLongRuns : usualEvents);
    std::uint64_t seed = trails::numberFrom("BRINDLE_SIMULATION_SEED", 1);
    for (std::size_t done = 0; done < events; done += dayLength, ++seed) {
        const Trail day = trails::makeDay(seed, std::min(dayLength, events - done), habits);
        if (const auto failure = play(day))
            FAIL() << trails::report(seed, day, *failure, play, habits);
    }
}

} // namespace
} // namespace brindle
