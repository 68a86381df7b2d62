#pragma once

#include "ui/Motion.h"
#include "ui/Stage.h"

#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace brindle {

class AppContainer;
class ArtworkLoader;

/// What the closed island shows: the current event, else what plays, else the idle row. Main thread; the
/// container and the artwork outlive it.
class CollapsedContent : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("part of the island")
    /// An `ActivityPresentation`; without content, the row of media or idleness.
    Q_PROPERTY(brindle::StageSubject subject READ subject NOTIFY subjectChanged)
    /// Within that row: a `MediaPresentation`; without content, idleness.
    Q_PROPERTY(brindle::StageSubject row READ row NOTIFY mediaChanged)
    /// Within the media: a `MediaPresentation`, with a key for each song.
    Q_PROPERTY(brindle::StageSubject artwork READ artwork NOTIFY mediaChanged)
    Q_PROPERTY(double outputVolume READ outputVolume NOTIFY outputVolumeChanged)
    Q_PROPERTY(QString idleSymbol READ idleSymbol NOTIFY idleChanged)
    Q_PROPERTY(QString idleText READ idleText NOTIFY idleChanged)
    Q_PROPERTY(brindle::Motion mediaMotion READ mediaMotion NOTIFY motionChanged)
    Q_PROPERTY(brindle::Motion levelMotion READ levelMotion NOTIFY motionChanged)

public:
    enum class Kind { activity, media, idle };

    CollapsedContent(AppContainer &container, const ArtworkLoader &artwork, QObject *parent = nullptr);

    Kind kind() const;
    StageSubject subject() const;
    StageSubject row() const;
    StageSubject artwork() const;
    double outputVolume() const;
    QString idleSymbol() const;
    QString idleText() const;
    /// Changes of what plays.
    Motion mediaMotion() const;
    /// The level bar's value.
    Motion levelMotion() const;

Q_SIGNALS:
    void subjectChanged();
    void mediaChanged();
    void outputVolumeChanged();
    void idleChanged();
    void motionChanged();

private:
    bool reducesMotion() const;

    AppContainer &m_container;
    const ArtworkLoader &m_artwork;
};

} // namespace brindle
