#pragma once

#include "media/MediaLayout.h"
#include "media/MediaTrackAppearance.h"
#include "ui/ButtonStyle.h"
#include "ui/Motion.h"
#include "ui/Stage.h"

#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace brindle {

class AccessibilitySettings;
class ArtworkLoader;
class MediaProvider;
class SettingsStore;

/// Everything that the media view binds to, and what its controls do. Main thread; what it is made of
/// outlives it.
class MediaPresenter : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("handed in by the island")
    /// A `TrackPresentation`, with a key for each song; without content, nothing plays.
    Q_PROPERTY(brindle::StageSubject player READ player NOTIFY playerChanged)
    /// Which blocks the user wants.
    Q_PROPERTY(bool showPlayer READ showPlayer NOTIFY blocksChanged)
    Q_PROPERTY(bool showClock READ showClock NOTIFY blocksChanged)
    Q_PROPERTY(brindle::Motion trackMotion READ trackMotion NOTIFY motionChanged)
    Q_PROPERTY(brindle::Motion playbackMotion READ playbackMotion NOTIFY motionChanged)
    Q_PROPERTY(brindle::Motion blockMotion READ blockMotion NOTIFY motionChanged)
    Q_PROPERTY(brindle::Motion artworkMotion READ artworkMotion NOTIFY motionChanged)
    Q_PROPERTY(brindle::ButtonStyle controlStyle READ controlStyle NOTIFY motionChanged)
    Q_PROPERTY(brindle::ButtonStyle cardStyle READ cardStyle NOTIFY motionChanged)

public:
    MediaPresenter(MediaProvider &media, const ArtworkLoader &artwork, const SettingsStore &settings,
        const AccessibilitySettings &accessibility, QObject *parent = nullptr);

    StageSubject player() const;
    bool showPlayer() const;
    bool showClock() const;
    /// Of one song to the next.
    Motion trackMotion() const;
    /// Of a pause, and of its end.
    Motion playbackMotion() const;
    /// Of a block that comes or goes.
    Motion blockMotion() const;
    /// Of a picture that arrives after its song.
    Motion artworkMotion() const;
    ButtonStyle controlStyle() const;
    ButtonStyle cardStyle() const;

    Q_INVOKABLE void togglePlayback();
    Q_INVOKABLE void previousTrack();
    Q_INVOKABLE void nextTrack();
    Q_INVOKABLE void seek(double seconds);

    /// How a song looks, from 0 (gone) to 1 (there).
    Q_INVOKABLE brindle::MediaTrackAppearance appearance(double progress) const;
    Q_INVOKABLE static brindle::MediaLayout layout(
        QSizeF view, bool showPlayer, bool showClock, bool showWeather);
    /// The cards of this layout as one subject; its content is the layout.
    Q_INVOKABLE static brindle::StageSubject cards(const brindle::MediaLayout &layout);
    Q_INVOKABLE static brindle::PlayerLayout playerLayout(QSizeF player);
    Q_INVOKABLE static brindle::CardLayout cardLayout(QSizeF card);
    Q_INVOKABLE static QString timeLabel(double seconds);
    /// The clock's texts, in the user's locale; `seconds` since the start of 2001, UTC.
    Q_INVOKABLE static QString hourAndMinute(double seconds);
    Q_INVOKABLE static QString weekday(double seconds);

Q_SIGNALS:
    void playerChanged();
    void blocksChanged();
    void motionChanged();

private:
    bool reducesEffects() const;
    Motion motion(const Motion &usual) const;

    MediaProvider &m_media;
    const ArtworkLoader &m_artwork;
    const SettingsStore &m_settings;
    const AccessibilitySettings &m_accessibility;
};

} // namespace brindle
