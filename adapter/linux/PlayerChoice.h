#pragma once

#include "adapter/linux/PlayerState.h"
#include "foundation/Date.h"

#include <QList>

#include <optional>

namespace brindle::adapter {

/// Numbers the events of all players in their order, from 1.
class Turns
{
public:
    quint64 next() { return ++m_last; }

private:
    quint64 m_last = 0;
};

/// When a player came, began and ended to play, as turns; 0 where that never was.
///
/// Of players that were there before anybody looked, the order of their coming has to do: one that plays
/// counts as having begun when it came, one that is paused as having played then.
class PlayHistory
{
public:
    enum class Arrival { wasThere, came };

    PlayHistory(Turns &turns, Arrival arrival) : m_turns(&turns), m_arrival(arrival), m_appeared(turns.next())
    { }

    void observe(PlaybackStatus status, const Track &track, Date now);

    quint64 appeared() const { return m_appeared; }
    quint64 began() const { return m_began; }
    quint64 ended() const { return m_ended; }

private:
    void observeFirst(PlaybackStatus status);
    bool isGapBetweenTracks(const Track &track, Date now) const;

    Turns *m_turns;
    Arrival m_arrival;
    quint64 m_appeared;
    quint64 m_began = 0;
    quint64 m_ended = 0;
    std::optional<PlaybackStatus> m_status;
    Track m_playedTrack;
    Date m_endedAt;
};

/// What the choice between players depends on.
struct Candidate
{
    PlaybackStatus status = PlaybackStatus::stopped;
    /// Whether it has anything to show.
    bool hasTitle = true;
    quint64 appeared = 0;
    quint64 began = 0;
    quint64 ended = 0;
};

/// The index of the player to follow; absent where there is none.
///
/// One that plays goes before one that does not. Among those that play it is the one that began last. Among
/// the others it is the one that played last; one that is empty comes after all that show something, and of
/// those that were never seen playing a paused one before a stopped one, the earlier before the later.
std::optional<qsizetype> choose(const QList<Candidate> &players);

} // namespace brindle::adapter
