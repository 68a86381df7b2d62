#pragma once

#include "media/NowPlayingTrack.h"

#include <QObject>

#include <optional>

namespace brindle {

/// What plays and how loud, and the commands that move it. Main thread; commands return at once.
class MediaProvider : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    /// For the owner: from here on it follows what plays.
    virtual void start() { }
    /// And no longer.
    virtual void stop() { }

    virtual const std::optional<NowPlayingTrack> &nowPlaying() const = 0;
    /// The system's output level, 0 to 1.
    virtual double outputVolume() const = 0;

    virtual void togglePlayback() = 0;
    virtual void seek(double seconds) = 0;
    virtual void previousTrack() = 0;
    virtual void nextTrack() = 0;

Q_SIGNALS:
    /// After a report, when it differs from what was shown; after a command always, since the time of the
    /// position is new.
    void nowPlayingChanged();
    void outputVolumeChanged();
};

} // namespace brindle
