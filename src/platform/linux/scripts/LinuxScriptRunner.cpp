#include "platform/linux/scripts/LinuxScriptRunner.h"

#include "platform/linux/applications/KnownApplications.h"
#include "platform/linux/applications/ProcessIdentity.h"
#include "platform/linux/dbus/BusConnection.h"
#include "platform/linux/scripts/DevTools.h"
#include "platform/linux/scripts/MediaStates.h"
#include "platform/linux/scripts/MprisPlayers.h"

#include <QCoreApplication>
#include <QLocale>
#include <QThread>
#include <QUrl>

namespace brindle {

namespace {

const QString spotify = QStringLiteral("com.spotify.client");
const QString spotifyOnTheBus = QStringLiteral("org.mpris.MediaPlayer2.spotify");

/// Of the time for a script, what the debugging port may use up, so that some is left for the bus.
constexpr double shareOfTheTabs = 0.7;

constexpr double microsecondsPerSecond = 1e6;
constexpr double microsecondsPerMillisecond = 1e3;

ScriptOutcome executed(const std::optional<ScriptDescriptor> &result = std::nullopt)
{
    return {ScriptOutcome::Status::executed, result};
}

ScriptOutcome failed()
{
    return {ScriptOutcome::Status::failed, std::nullopt};
}

ScriptOutcome outcome(bool isDone)
{
    return isDone ? executed() : failed();
}

ScriptDescriptor descriptor(const MprisState &state, bool withArtwork)
{
    if (state.status == MprisState::Status::stopped)
        return ScriptDescriptor::missing();
    const bool isPlaying = state.status == MprisState::Status::playing;
    QList<ScriptDescriptor> items{ScriptDescriptor::text(state.title), ScriptDescriptor::text(state.artist),
        ScriptDescriptor::text(state.album),
        // Milliseconds here and seconds there: so the player's dictionary has it.
        ScriptDescriptor::number(state.length / microsecondsPerMillisecond),
        ScriptDescriptor::number(state.position / microsecondsPerSecond),
        ScriptDescriptor::text(isPlaying ? QStringLiteral("playing") : QStringLiteral("paused"))};
    if (withArtwork) {
        items.append(state.artworkUrl.isEmpty() ? ScriptDescriptor::missing()
                                                : ScriptDescriptor::text(state.artworkUrl));
    }
    return ScriptDescriptor::list(items);
}

QString javaScriptNumber(double value)
{
    return QString::number(value, 'g', QLocale::FloatingPointShortest);
}

/// What a tab would say of its media, from what the browser says on the bus; empty when that names no page.
QString mediaState(const MprisState &state)
{
    constexpr char16_t unitSeparator = 31;
    const QString scheme = QUrl(state.url).scheme();
    const bool isPage = scheme == u"http" || scheme == u"https";
    if (state.status == MprisState::Status::stopped || !isPage)
        return {};
    const bool isPlaying = state.status == MprisState::Status::playing;
    QString title = state.title;
    return QStringList{isPlaying ? QStringLiteral("1") : QStringLiteral("0"),
        title.remove(QChar(unitSeparator)), QString::fromLatin1(QUrl(state.url).toEncoded()),
        javaScriptNumber(state.length / microsecondsPerSecond),
        javaScriptNumber(state.position / microsecondsPerSecond)}
        .join(QChar(unitSeparator));
}

} // namespace

LinuxScriptRunner::LinuxScriptRunner(
    BusConnection &sessionBus, const Scheduler &time, Surroundings surroundings)
    : m_time(time)
    , m_surroundings(std::move(surroundings))
{
    sessionBus.whenReady(m_lifetime.guard([this](const QDBusConnection &connection) {
        const std::scoped_lock lock(m_mutex);
        m_connection = connection;
    }));
}

ScriptOutcome LinuxScriptRunner::run(const QString &source)
{
    Q_ASSERT(QThread::currentThread() != QCoreApplication::instance()->thread());
    const auto script = recogniseScript(source);
    if (!script)
        return {ScriptOutcome::Status::notCompiled, std::nullopt};
    const Deadline deadline(m_time, m_surroundings.patience);
    return std::visit([&](const auto &what) { return execute(what, deadline); }, *script);
}

ScriptOutcome LinuxScriptRunner::execute(const script::NowPlaying &question, const Deadline &deadline) const
{
    const auto bus = question.application == spotify ? players(deadline) : std::nullopt;
    const auto state = bus ? bus->state(spotifyOnTheBus) : std::nullopt;
    return state ? executed(descriptor(*state, question.withArtwork)) : failed();
}

ScriptOutcome LinuxScriptRunner::execute(const script::PlayPause &command, const Deadline &deadline) const
{
    const auto bus = command.application == spotify ? players(deadline) : std::nullopt;
    return outcome(bus && bus->playPause(spotifyOnTheBus));
}

ScriptOutcome LinuxScriptRunner::execute(const script::SetPosition &command, const Deadline &deadline) const
{
    const auto bus = command.application == spotify ? players(deadline) : std::nullopt;
    const auto state = bus ? bus->state(spotifyOnTheBus) : std::nullopt;
    return outcome(
        state && bus->setPosition(spotifyOnTheBus, state->track, command.seconds * microsecondsPerSecond));
}

ScriptOutcome LinuxScriptRunner::execute(const script::MediaInTabs &question, const Deadline &deadline) const
{
    const auto *const browser = knownApplication(question.application);
    if (!browser || browser->profile.isEmpty())
        return failed();
    MediaStates states;
    const bool hasAnswered = askTabs(*browser, question.javaScript, states,
                                 deadline.within(m_surroundings.patience * shareOfTheTabs))
        || askPlayers(*browser, states, deadline);
    return hasAnswered ? executed(ScriptDescriptor::text(states.chosen())) : failed();
}

bool LinuxScriptRunner::askTabs(const KnownApplication &browser, const QString &javaScript,
    MediaStates &states, const Deadline &deadline) const
{
    bool hasAnswered = false;
    for (const QString &profile : profiles(browser)) {
        if (const auto port = DevTools::portOfProfile(profile); port && !states.isDecided())
            hasAnswered |=
                DevTools(*port, m_surroundings.patienceWithOne).askTabs(javaScript, states, deadline);
    }
    return hasAnswered;
}

bool LinuxScriptRunner::askPlayers(
    const KnownApplication &browser, MediaStates &states, const Deadline &deadline) const
{
    const auto bus = players(deadline);
    const auto services = bus ? bus->services() : std::nullopt;
    for (const QString &service : services.value_or(QStringList())) {
        if (states.isDecided() || deadline.hasPassed())
            break;
        const auto player = bus->within(m_surroundings.patienceWithOne);
        const auto process = player.processOf(service);
        if (const auto state = player.state(service);
            state && isOf(browser, state->process ? state->process : process))
            states.take(mediaState(*state));
    }
    return services.has_value();
}

bool LinuxScriptRunner::isOf(const KnownApplication &browser, std::optional<qint64> process) const
{
    const auto identity = process
        ? identityOfProcess(m_surroundings.processes + u'/' + QString::number(*process))
        : std::nullopt;
    return identity && knownApplication(*identity) == &browser;
}

QStringList LinuxScriptRunner::profiles(const KnownApplication &browser) const
{
    QStringList folders{m_surroundings.configuration + u'/' + browser.profile};
    if (!browser.flatpak.isEmpty())
        folders.append(
            m_surroundings.flatpaks + u'/' + browser.flatpak + QStringLiteral("/config/") + browser.profile);
    return folders;
}

std::optional<MprisPlayers> LinuxScriptRunner::players(const Deadline &deadline) const
{
    const std::scoped_lock lock(m_mutex);
    return m_connection ? std::optional(MprisPlayers(*m_connection, deadline)) : std::nullopt;
}

} // namespace brindle
