#pragma once

#include "media/NowPlayingTrack.h"

#include <QFont>
#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace brindle {

/// A track as the media view shows it. A plain value; two are equal when they are drawn alike, now and later.
class TrackPresentation
{
    Q_GADGET
    QML_ANONYMOUS
    Q_PROPERTY(QString title READ title)
    Q_PROPERTY(QString artist READ artist)
    Q_PROPERTY(QString status READ status)
    /// Title and artist as they are read out.
    Q_PROPERTY(QString readOut READ readOut)
    Q_PROPERTY(bool isPlaying READ isPlaying)
    /// Seconds; 0 while it is not known.
    Q_PROPERTY(double duration READ duration)
    Q_PROPERTY(QString durationLabel READ durationLabel)
    /// Null where there is none.
    Q_PROPERTY(QImage artwork READ artwork)
    Q_PROPERTY(QImage sourceIcon READ sourceIcon)

public:
    TrackPresentation() = default;
    /// `artwork` is the picture to show of it, null for none.
    TrackPresentation(const NowPlayingTrack &track, const QImage &artwork);

    QString title() const { return m_track.title; }
    QString artist() const;
    QString status() const;
    QString readOut() const;
    bool isPlaying() const { return m_track.isPlaying; }
    double duration() const { return m_track.duration.value_or(0); }
    QString durationLabel() const;
    QImage artwork() const { return m_artwork; }
    QImage sourceIcon() const { return m_track.sourceIcon.value_or(QImage()); }

    /// The position in seconds; `referenceSeconds` is the moment, since the start of 2001, UTC.
    Q_INVOKABLE double elapsedAt(double referenceSeconds) const;
    /// The position as it is read out, "1:05 of 3:20".
    Q_INVOKABLE QString positionReadOut(double elapsed) const;
    /// A label of the width that the elapsed time takes in this font, whatever its digits.
    Q_INVOKABLE QString widestLabel(double elapsed, const QFont &font) const;

    bool operator==(const TrackPresentation &other) const;

private:
    NowPlayingTrack m_track;
    QImage m_artwork;
};

} // namespace brindle
