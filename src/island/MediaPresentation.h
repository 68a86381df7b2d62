#pragma once

#include "media/NowPlayingTrack.h"

#include <QImage>
#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace brindle {

/// A track as the closed island shows it. A plain value; two are equal when they would be drawn alike.
struct MediaPresentation
{
    Q_GADGET
    QML_ANONYMOUS
    Q_PROPERTY(QString title MEMBER title)
    Q_PROPERTY(bool isPlaying MEMBER isPlaying)
    /// Null where there is none, or none yet: then a placeholder stands in.
    Q_PROPERTY(QImage picture MEMBER picture)

public:
    /// `artwork` is the song's picture, null while there is none.
    static MediaPresentation of(const NowPlayingTrack &track, const QImage &artwork);

    QString title;
    bool isPlaying = false;
    QImage picture;

    bool operator==(const MediaPresentation &other) const;
};

} // namespace brindle
