#pragma once

#include "adapter/linux/PlaybackPosition.h"
#include "adapter/linux/PlayerChoice.h"
#include "adapter/linux/PlayerState.h"

#include <QVariantMap>

namespace brindle::adapter {

/// One player, as it follows from all that it said until now.
class PlayerModel
{
public:
    PlayerModel(Turns &turns, PlayHistory::Arrival arrival) : m_history(turns, arrival) { }

    /// Whether it has said whether it plays. Before that there is nothing to follow.
    bool isKnown() const { return m_isKnown; }
    const PlayerState &state() const { return m_state; }
    const PlaybackPosition &position() const { return m_position; }
    Candidate candidate() const;

    /// It was asked for all its properties, and these are they.
    void answered(const QVariantMap &properties, Date now);
    /// It tells, unasked, that these have changed. To be followed by a question for all.
    void changed(const QVariantMap &properties, Date now);
    /// Its position jumped to there, in seconds.
    void jumped(double elapsed, Date now) { m_position.jump(elapsed, now); }

private:
    void become(const PlayerState &state, Date now);

    bool m_isKnown = false;
    PlayerState m_state;
    PlayHistory m_history;
    PlaybackPosition m_position;
};

} // namespace brindle::adapter
