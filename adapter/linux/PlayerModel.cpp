#include "adapter/linux/PlayerModel.h"

#include "adapter/linux/PlayerProperties.h"

namespace brindle::adapter {

Candidate PlayerModel::candidate() const
{
    return {m_state.status, !m_state.track.title.isEmpty(), m_history.appeared(), m_history.began(),
        m_history.ended()};
}

void PlayerModel::answered(const QVariantMap &properties, Date now)
{
    PlayerState state;
    PlayerProperties::merge(state, properties);
    become(state, now);
    m_position.read(PlayerProperties::position(properties), now);
}

void PlayerModel::changed(const QVariantMap &properties, Date now)
{
    // The answer to the first question, which is under way, has it all.
    if (!m_isKnown && !PlayerProperties::speakOfStatus(properties))
        return;
    PlayerState state = m_state;
    PlayerProperties::merge(state, properties);
    // Some players leave out of a signal what has not changed. The answer to the question that follows it
    // tells whether the title has really gone.
    if (state.track.title.isEmpty())
        state.track = m_state.track;
    become(state, now);
    if (PlayerProperties::speakOfPosition(properties))
        m_position.read(PlayerProperties::position(properties), now);
}

void PlayerModel::become(const PlayerState &state, Date now)
{
    if (m_isKnown && !state.track.isSamePiece(m_state.track))
        m_position.beginTrack(now);
    m_position.setSpeed(state.speed(), now);
    m_history.observe(state.status, state.track, now);
    m_state = state;
    m_isKnown = true;
}

} // namespace brindle::adapter
