#pragma once

#include "media/NowPlayingTrack.h"

#include <QFont>
#include <QString>

namespace brindle {

/// What the media view says, in words. Any thread.
class MediaTexts
{
public:
    /// Minutes and seconds of the nearest whole second, "62:05"; never below "0:00", and "0:00" for what is
    /// no number.
    static QString timeLabel(double seconds);
    /// The duration's label, and what stands there when it is not known.
    static QString durationLabel(const NowPlayingTrack &track);
    /// A label as wide, in this font, as this one with any other digits. Main thread.
    static QString widest(const QString &timeLabel, const QFont &font);

    static QString artist(const NowPlayingTrack &track);
    /// "Playing in Player", or without the source's name where it has none.
    static QString status(const NowPlayingTrack &track);
    /// Title and artist as they are read out.
    static QString readOut(const NowPlayingTrack &track);
};

} // namespace brindle
