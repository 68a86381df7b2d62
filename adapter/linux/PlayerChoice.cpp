#include "adapter/linux/PlayerChoice.h"

#include <algorithm>
#include <tuple>
#include <utility>

namespace brindle::adapter {

namespace {

/// Seconds for which some players say that they are stopped while they open the next track.
constexpr double longestGap = 1;

auto standing(const Candidate &player)
{
    const bool isPlaying = player.status == PlaybackStatus::playing;
    const bool isPaused = player.status == PlaybackStatus::paused;
    return std::tuple(isPlaying, isPlaying ? player.began : 0, player.hasTitle, player.ended, isPaused,
        -qint64(player.appeared));
}

} // namespace

void PlayHistory::observe(PlaybackStatus status, const Track &track, Date now)
{
    const auto before = std::exchange(m_status, status);
    if (!before) {
        observeFirst(status);
    } else if (status == PlaybackStatus::playing && before != PlaybackStatus::playing) {
        if (before != PlaybackStatus::stopped || !isGapBetweenTracks(track, now))
            m_began = m_turns->next();
    } else if (status != PlaybackStatus::playing && before == PlaybackStatus::playing) {
        m_ended = m_turns->next();
        m_endedAt = now;
    }
    if (status == PlaybackStatus::playing)
        m_playedTrack = track;
}

void PlayHistory::observeFirst(PlaybackStatus status)
{
    if (status == PlaybackStatus::playing)
        m_began = m_arrival == Arrival::wasThere ? m_appeared : m_turns->next();
    else if (status == PlaybackStatus::paused && m_arrival == Arrival::wasThere)
        m_ended = m_appeared;
}

// A player whose list goes on by itself in the background has not begun anew.
bool PlayHistory::isGapBetweenTracks(const Track &track, Date now) const
{
    return m_began != 0 && now - m_endedAt <= longestGap && !track.isSamePiece(m_playedTrack);
}

std::optional<qsizetype> choose(const QList<Candidate> &players)
{
    const auto best = std::max_element(players.cbegin(), players.cend(),
        [](const Candidate &one, const Candidate &other) { return standing(one) < standing(other); });
    return best == players.cend() ? std::nullopt : std::optional(best - players.cbegin());
}

} // namespace brindle::adapter
