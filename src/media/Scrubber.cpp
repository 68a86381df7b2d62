#include "media/Scrubber.h"

namespace brindle {

void Scrubber::setElapsed(double seconds)
{
    if (seconds == m_elapsed)
        return;
    m_elapsed = seconds;
    Q_EMIT elapsedChanged();
    if (!m_isScrubbing)
        Q_EMIT shownChanged();
}

void Scrubber::begin()
{
    if (m_isScrubbing)
        return;
    m_scrubValue = m_elapsed;
    m_isScrubbing = true;
    Q_EMIT scrubValueChanged();
    Q_EMIT isScrubbingChanged();
}

void Scrubber::move(double seconds)
{
    if (!m_isScrubbing || seconds == m_scrubValue)
        return;
    m_scrubValue = seconds;
    Q_EMIT scrubValueChanged();
    Q_EMIT shownChanged();
}

void Scrubber::end()
{
    if (!m_isScrubbing)
        return;
    m_isScrubbing = false;
    Q_EMIT seekWanted(m_scrubValue);
    Q_EMIT isScrubbingChanged();
    Q_EMIT shownChanged();
}

void Scrubber::cancel()
{
    if (!m_isScrubbing)
        return;
    m_isScrubbing = false;
    Q_EMIT isScrubbingChanged();
    Q_EMIT shownChanged();
}

} // namespace brindle
