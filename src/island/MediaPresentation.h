#pragma once

#include "media/NowPlayingTrack.h"

#include <QImage>
#include <QObject>
#include <QUrl>
#include <QtQml/qqmlregistration.h>

namespace brindle {

/// A track as the closed island shows it. A plain value; two are equal when they would be drawn alike.
struct MediaPresentation
{
    Q_GADGET
    QML_ANONYMOUS
    Q_PROPERTY(QString title MEMBER title)
    Q_PROPERTY(bool isPlaying MEMBER isPlaying)
    /// The picture at hand; when it is null, the one at `artworkURL` is to be loaded. With neither, and while
    /// or when that fails, a placeholder stands in.
    Q_PROPERTY(QImage picture MEMBER picture)
    Q_PROPERTY(QUrl artworkURL MEMBER artworkURL)

public:
    static MediaPresentation of(const NowPlayingTrack &track);

    QString title;
    bool isPlaying = false;
    QImage picture;
    QUrl artworkURL;

    bool operator==(const MediaPresentation &other) const;
};

} // namespace brindle
