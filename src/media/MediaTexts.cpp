#include "media/MediaTexts.h"

#include <QFontMetricsF>

#include <algorithm>
#include <cmath>

namespace brindle {

QString MediaTexts::timeLabel(double seconds)
{
    // A century, which no track lasts, still has whole seconds.
    constexpr double longest = 100.0 * 366 * 24 * 3600;
    const double whole = std::isnan(seconds) ? 0 : std::clamp(std::round(seconds), 0.0, longest);
    const qint64 all = qint64(whole);
    return QStringLiteral("%1:%2").arg(all / 60).arg(all % 60, 2, 10, QLatin1Char('0'));
}

QString MediaTexts::durationLabel(const NowPlayingTrack &track)
{
    return track.duration ? timeLabel(*track.duration) : QStringLiteral("--:--");
}

QString MediaTexts::widest(const QString &timeLabel, const QFont &font)
{
    // In few fonts are all digits equally wide, and in none is it a matter of course which is the widest.
    const QFontMetricsF metrics(font);
    QChar widestDigit = u'0';
    for (QChar digit = u'1'; digit <= u'9'; digit = QChar(digit.unicode() + 1)) {
        if (metrics.horizontalAdvance(digit) > metrics.horizontalAdvance(widestDigit))
            widestDigit = digit;
    }
    QString result = timeLabel;
    for (QChar &character : result) {
        if (character.isDigit())
            character = widestDigit;
    }
    return result;
}

QString MediaTexts::artist(const NowPlayingTrack &track)
{
    return track.artist.value_or(QStringLiteral("Unknown artist"));
}

QString MediaTexts::status(const NowPlayingTrack &track)
{
    const QString state = track.isPlaying ? QStringLiteral("Playing") : QStringLiteral("Paused");
    return track.sourceName ? state + QStringLiteral(" in ") + *track.sourceName : state;
}

QString MediaTexts::readOut(const NowPlayingTrack &track)
{
    return track.title + QStringLiteral(", ") + artist(track);
}

} // namespace brindle
