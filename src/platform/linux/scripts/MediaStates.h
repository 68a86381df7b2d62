#pragma once

#include <QString>

namespace brindle {

/// The choice between what several tabs or players of a browser say, in the order in which they are asked:
/// the first that plays ends the asking, else the first that has anything counts.
class MediaStates
{
public:
    void take(const QString &state)
    {
        if (m_chosen.isEmpty() || isPlaying(state))
            m_chosen = state;
    }
    bool isDecided() const { return isPlaying(m_chosen); }
    /// Empty when nobody had anything.
    const QString &chosen() const { return m_chosen; }

private:
    static bool isPlaying(const QString &state) { return state.startsWith(u'1'); }

    QString m_chosen;
};

} // namespace brindle
