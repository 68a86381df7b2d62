#include "unit/media/MediaModel.h"

#include <cmath>

namespace brindle {

namespace {

QString sourceOf(const NowPlayingTrack &track)
{
    if (track.sourceBundleIdentifier.has_value())
        return *track.sourceBundleIdentifier;
    if (track.sourceName.has_value())
        return *track.sourceName;
    return QString(track.title + u'|') + (track.artist ? *track.artist : QString());
}

QString songOf(const NowPlayingTrack &track)
{
    QString song = QStringLiteral("unknown-source");
    if (track.sourceName)
        song = *track.sourceName;
    if (track.sourceBundleIdentifier)
        song = *track.sourceBundleIdentifier;
    song += u'|' + track.title + u'|';
    if (track.artist)
        song += *track.artist;
    song += u'|';
    if (track.album)
        song += *track.album;
    song += u'|';
    if (track.artworkURL)
        song += track.artworkURL->toString();
    return song;
}

bool looksTheSame(const NowPlayingTrack &one, const NowPlayingTrack &other)
{
    if (one.title != other.title || one.artist != other.artist || one.album != other.album)
        return false;
    if (one.duration != other.duration || one.elapsed != other.elapsed)
        return false;
    if (one.isPlaying != other.isPlaying || one.playbackRate != other.playbackRate)
        return false;
    if (one.artworkFingerprint != other.artworkFingerprint || one.artworkURL != other.artworkURL)
        return false;
    if (bool(one.artwork) != bool(other.artwork))
        return false;
    return one.sourceName == other.sourceName && one.sourceBundleIdentifier == other.sourceBundleIdentifier;
}

double atLeast(double least, double value)
{
    return value < least ? least : value;
}

double positionOf(const NowPlayingTrack &track, double now)
{
    double position = track.elapsed ? *track.elapsed : 0;
    if (track.isPlaying) {
        const double since = now - track.elapsedUpdatedAt.secondsSince1970();
        position += atLeast(0, track.playbackRate) * atLeast(0, since);
    }
    if (position < 0)
        position = 0;
    if (track.duration && position > *track.duration)
        position = *track.duration;
    return position;
}

bool takesScripts(const NowPlayingTrack &track)
{
    const QString application = track.sourceBundleIdentifier.value_or(QString());
    return application == u"com.spotify.client" || application == u"com.apple.Music";
}

} // namespace

QStringList MediaModel::sources() const
{
    QStringList names;
    for (const auto &[name, source] : m_known)
        names.append(name);
    return names;
}

void MediaModel::take(const QList<NowPlayingTrack> &reports)
{
    const double now = wallClock;
    for (NowPlayingTrack track : reports) {
        const QString name = sourceOf(track);
        const bool wasKnown = m_known.contains(name);

        if (!track.sourceIcon && track.sourceBundleIdentifier) {
            const auto application = installed.find(*track.sourceBundleIdentifier);
            if (application != installed.end() && !track.sourceName)
                track.sourceName = application->second;
        }
        if (wasKnown && !track.artwork)
            track.artwork = m_known.at(name).track.artwork;
        if (wasKnown && !track.artworkURL)
            track.artworkURL = m_known.at(name).track.artworkURL;

        if (m_pressed && m_pressed->source == name) {
            if (now >= m_pressed->until) {
                m_pressed.reset();
            } else if (m_pressed->plays) {
                track.isPlaying = true;
                track.elapsed = m_pressed->from + atLeast(0, now - m_pressed->at);
                track.playbackRate = atLeast(1, track.playbackRate);
                track.elapsedUpdatedAt = Date::fromSecondsSince1970(now);
            } else {
                track.isPlaying = false;
                track.elapsed = m_pressed->from;
                track.playbackRate = 0;
                track.elapsedUpdatedAt = Date::fromSecondsSince1970(now);
            }
        }
        if (m_seekUnderWay && m_seekUnderWay->source == name) {
            double expected = m_seekUnderWay->to;
            if (track.isPlaying)
                expected += atLeast(1, track.playbackRate) * atLeast(0, now - m_seekUnderWay->at);
            const double off = std::abs(positionOf(track, now) - expected);
            if (songOf(track) != m_seekUnderWay->song || now >= m_seekUnderWay->until || off <= 1.25) {
                m_seekUnderWay.reset();
            } else {
                track.elapsed = track.duration && expected > *track.duration ? *track.duration : expected;
                track.elapsedUpdatedAt = Date::fromSecondsSince1970(now);
            }
        }

        double playedAt = now;
        if (!track.isPlaying && wasKnown)
            playedAt = m_known.at(name).playedAt;
        m_known.insert_or_assign(name, Source{track, now, playedAt});
    }
    choose();
}

void MediaModel::choose()
{
    std::optional<Source> best;
    for (const auto &[name, source] : m_known) {
        bool isBetter = !best;
        if (best && source.track.isPlaying && best->track.isPlaying)
            isBetter = source.heardAt > best->heardAt;
        else if (best && !source.track.isPlaying && !best->track.isPlaying)
            isBetter = source.playedAt > best->playedAt;
        else if (best)
            isBetter = source.track.isPlaying;
        if (isBetter)
            best = source;
    }
    const bool isNews = best && nowPlaying ? !looksTheSame(best->track, *nowPlaying)
                                           : best.has_value() != nowPlaying.has_value();
    if (!isNews)
        return;
    nowPlaying.reset();
    if (best)
        nowPlaying = best->track;
    ++announcements;
}

void MediaModel::show(const NowPlayingTrack &track)
{
    nowPlaying = track;
    ++announcements;
}

// The remote

void MediaModel::remoteReports(const std::optional<NowPlayingTrack> &report)
{
    if (!report) {
        dropRemoteSource();
        return;
    }
    const QString name = sourceOf(*report);
    if (m_remoteSource && *m_remoteSource != name)
        m_known.erase(*m_remoteSource);
    m_remoteSource = name;
    take({*report});
}

void MediaModel::dropRemoteSource()
{
    if (!m_remoteSource)
        return;
    m_known.erase(*m_remoteSource);
    m_remoteSource.reset();
    choose();
}

void MediaModel::remoteIsSaidToRun(bool runs)
{
    supportsTransportControls = runs;
    if (runs)
        return;
    dropRemoteSource();
    if (!remoteRuns)
        poll();
}

// Asking the applications

void MediaModel::onQueue(std::function<void()> work)
{
    m_queue.push_back(std::move(work));
    if (!m_queueIsHeld)
        releaseQueue();
}

void MediaModel::releaseQueue()
{
    m_queueIsHeld = false;
    m_laterThisTurn.push_back([this] {
        while (!m_queueIsHeld && !m_queue.empty()) {
            const auto work = m_queue.front();
            m_queue.pop_front();
            work();
        }
    });
}

void MediaModel::poll()
{
    if (m_pollUnderWay)
        return;
    m_pollUnderWay = true;
    onQueue([this, asked = running] {
        ++polls;
        QList<NowPlayingTrack> answers;
        for (const auto &[application, track] : has) {
            if (asked.contains(application))
                answers.append(track);
        }
        m_laterThisTurn.push_back([this, answers] {
            take(answers);
            for (auto source = m_known.begin(); source != m_known.end();) {
                const double age = wallClock - source->second.heardAt;
                if (age > 3.2)
                    source->second.track.isPlaying = false;
                source = age >= 7200 ? m_known.erase(source) : std::next(source);
            }
            choose();
            m_pollUnderWay = false;
        });
    });
}

// The person

void MediaModel::toggle()
{
    if (!nowPlaying)
        return;
    const double now = wallClock;
    const bool didPlay = nowPlaying->isPlaying;
    NowPlayingTrack track = *nowPlaying;
    const double position = positionOf(track, now);
    track.elapsed = position;
    track.elapsedUpdatedAt = Date::fromSecondsSince1970(now);
    track.isPlaying = !didPlay;
    track.playbackRate = didPlay ? 0 : atLeast(1, track.playbackRate);
    const QString name = sourceOf(track);
    m_pressed = PressedPlay{name, !didPlay, position, now, now + 2.0};
    if (const auto source = m_known.find(name); source != m_known.end()) {
        source->second.track = track;
        source->second.heardAt = now;
        if (!didPlay)
            source->second.playedAt = now;
    }
    show(track);
    if (remoteRuns) {
        remoteCommands.append(didPlay ? QStringLiteral("send 1") : QStringLiteral("send 0"));
    } else if (takesScripts(track)) {
        onQueue([this, application = *track.sourceBundleIdentifier] {
            applicationCommands.append(QStringLiteral("toggle ") + application);
            m_laterThisTurn.push_back([this] {
                if (!remoteRuns)
                    poll();
            });
        });
    }
}

void MediaModel::seek(double seconds)
{
    if (!nowPlaying)
        return;
    double to = atLeast(0, seconds);
    if (nowPlaying->duration && to > *nowPlaying->duration)
        to = *nowPlaying->duration;
    const QString number = QString::number(to);
    sought(to, 3.0);
    if (remoteRuns)
        remoteCommands.append(QStringLiteral("seek ") + number);
    if (takesScripts(*nowPlaying)) {
        onQueue([this, number, application = *nowPlaying->sourceBundleIdentifier] {
            applicationCommands.append(QStringLiteral("seek ") + number + u' ' + application);
        });
    }
}

void MediaModel::previous()
{
    if (!nowPlaying)
        return;
    sought(0, 1.8);
    if (remoteRuns)
        remoteCommands.append(QStringLiteral("send 5"));
}

void MediaModel::next()
{
    if (remoteRuns)
        remoteCommands.append(QStringLiteral("send 4"));
}

void MediaModel::sought(double to, double life)
{
    const double now = wallClock;
    NowPlayingTrack track = *nowPlaying;
    track.elapsed = to;
    track.elapsedUpdatedAt = Date::fromSecondsSince1970(now);
    m_seekUnderWay = Sought{sourceOf(track), songOf(track), to, now, now + life};
    if (const auto source = m_known.find(sourceOf(track)); source != m_known.end()) {
        source->second.track = track;
        source->second.heardAt = now;
    }
    show(track);
}

// Time

void MediaModel::start()
{
    if (m_startedAt)
        return;
    m_startedAt = uptime;
    m_pollTicks = 0;
    m_volumeTicks = 0;
    remoteRuns = remoteCanRun;
    supportsTransportControls = remoteRuns;
    m_laterThisTurn.push_back([this, runs = remoteRuns] { remoteIsSaidToRun(runs); });
    if (!remoteRuns)
        poll();
    readVolume();
}

void MediaModel::stop()
{
    m_startedAt.reset();
    remoteRuns = false;
    m_pollUnderWay = false;
}

void MediaModel::readVolume()
{
    if (!output)
        return;
    double level = output->muted ? 0 : output->level;
    level = level < 0 ? 0 : level > 1 ? 1 : level;
    if (std::abs(level - outputVolume) <= 0.005)
        return;
    outputVolume = level;
    ++volumeAnnouncements;
}

void MediaModel::endTurn()
{
    while (!m_laterThisTurn.empty()) {
        const auto next = m_laterThisTurn.front();
        m_laterThisTurn.pop_front();
        next();
    }
}

void MediaModel::pass(double seconds)
{
    endTurn();
    const double end = uptime + seconds;
    const auto comeTo = [this](double moment) {
        wallClock += moment - uptime;
        uptime = moment;
    };
    while (m_startedAt && *m_startedAt + (m_pollTicks + 1) * 1.5 <= end) {
        ++m_pollTicks;
        comeTo(*m_startedAt + m_pollTicks * 1.5);
        if (!remoteRuns)
            poll();
        endTurn();
    }
    // Nothing that the volume does touches the rest, so its ticks need no moment of their own; while nothing
    // changes, neither do any but the first.
    if (m_startedAt && *m_startedAt + (m_volumeTicks + 1) * 0.16 <= end) {
        m_volumeTicks = std::floor((end - *m_startedAt) / 0.16);
        readVolume();
    }
    comeTo(end);
}

} // namespace brindle
