#include "adapter/linux/NowPlayingStream.h"

#include <algorithm>

namespace brindle::adapter {

namespace {

/// Seconds that the first line waits for players that are slow to answer.
constexpr double firstWait = 0.25;
/// Seconds after which a player has got under way: just after a new track or a jump some still tell the
/// position that they had, or one ahead of the sound.
constexpr double settlingTime = 1;

} // namespace

NowPlayingStream::NowPlayingStream(const QDBusConnection &bus, Scheduler &scheduler, const Settings &settings)
    : m_scheduler(scheduler)
    , m_players(bus, scheduler)
    , m_artwork(scheduler, settings.fetchProgram)
    , m_writer(settings.output)
    , m_reporter(scheduler, settings.debounce, m_writer, [this] { return present(); })
{
    connect(&m_players, &Players::changed, this, &NowPlayingStream::takeChange);
    connect(&m_artwork, &ArtworkLoader::changed, this, &NowPlayingStream::takeChange);
    connect(&m_writer, &LineWriter::free, this, [this] { m_reporter.outputIsFree(); });
    connect(&m_writer, &LineWriter::readerGone, this, &NowPlayingStream::readerGone);
    QDBusConnection(bus).connect(QString(), QStringLiteral("/org/freedesktop/DBus/Local"),
        QStringLiteral("org.freedesktop.DBus.Local"), QStringLiteral("Disconnected"), this,
        SIGNAL(busGone()));
    m_reporter.begin(std::max(settings.debounce, firstWait));
}

void NowPlayingStream::takeChange()
{
    Player *player = m_players.chosen();
    const quint64 number = player ? player->number() : 0;
    if (number != m_followed) {
        m_followed = number;
        follow(player);
    }
    if (player) {
        followTrack(*player);
        settle(*player);
    }
    m_reporter.change();
    if (m_players.haveAnswered() && !m_artwork.isReading())
        m_reporter.beComplete();
}

void NowPlayingStream::follow(Player *player)
{
    m_track = {};
    m_confirmation.cancel();
    if (!player) {
        m_artwork.want({});
        return;
    }
    // What it said while nobody looked may be old.
    player->refresh();
    m_artwork.want(player->model().state().track.artworkAddress);
    m_track = player->model().state().track;
    m_confirmedEvents = player->model().position().events();
}

void NowPlayingStream::followTrack(const Player &player)
{
    const Track &track = player.model().state().track;
    if (track == m_track)
        return;
    m_track = track;
    m_artwork.want(track.artworkAddress);
}

void NowPlayingStream::settle(const Player &player)
{
    const int events = player.model().position().events();
    if (events == m_confirmedEvents)
        return;
    m_confirmedEvents = events;
    m_confirmation = m_scheduler.after(settlingTime, [this, number = player.number()] {
        if (Player *followed = m_players.withNumber(number))
            followed->refresh();
    });
}

Payload NowPlayingStream::present() const
{
    const Player *player = m_players.withNumber(m_followed);
    if (!player)
        return {};
    return makePayload({player->number(), player->bundleIdentifier(), player->model().state(),
        player->model().position(), m_artwork.picture()});
}

Player *NowPlayingStream::shown() const
{
    const auto &told = m_reporter.lastTold();
    Player *player = told ? m_players.withNumber(told->player) : nullptr;
    return player ? player : m_players.chosen();
}

} // namespace brindle::adapter
