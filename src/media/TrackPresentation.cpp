#include "media/TrackPresentation.h"

#include "media/MediaTexts.h"

#include <algorithm>
#include <cmath>

namespace brindle {

TrackPresentation::TrackPresentation(const NowPlayingTrack &track, const QImage &artwork)
    : m_track(track)
    , m_artwork(artwork)
{
    // A duration that nothing can be measured by is none.
    if (m_track.duration && !(std::isfinite(*m_track.duration) && *m_track.duration > 0))
        m_track.duration.reset();
    if (m_track.elapsed && !std::isfinite(*m_track.elapsed))
        m_track.elapsed.reset();
    if (!std::isfinite(m_track.playbackRate))
        m_track.playbackRate = 1;
}

QString TrackPresentation::artist() const
{
    return MediaTexts::artist(m_track);
}

QString TrackPresentation::status() const
{
    return MediaTexts::status(m_track);
}

QString TrackPresentation::readOut() const
{
    return MediaTexts::readOut(m_track);
}

QString TrackPresentation::durationLabel() const
{
    return MediaTexts::durationLabel(m_track);
}

double TrackPresentation::elapsedAt(double referenceSeconds) const
{
    return currentElapsed(m_track, Date::fromReferenceSeconds(referenceSeconds));
}

QString TrackPresentation::positionReadOut(double elapsed) const
{
    const QString position = MediaTexts::timeLabel(elapsed);
    return m_track.duration ? position + QStringLiteral(" of ") + durationLabel() : position;
}

QString TrackPresentation::widestLabel(double elapsed, const QFont &font) const
{
    return MediaTexts::widest(MediaTexts::timeLabel(std::max(elapsed, duration())), font);
}

bool TrackPresentation::operator==(const TrackPresentation &other) const
{
    return m_track == other.m_track && m_track.elapsedUpdatedAt == other.m_track.elapsedUpdatedAt
        && m_artwork.cacheKey() == other.m_artwork.cacheKey()
        && sourceIcon().cacheKey() == other.sourceIcon().cacheKey();
}

} // namespace brindle
