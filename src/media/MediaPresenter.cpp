#include "media/MediaPresenter.h"

#include "core/SettingsStore.h"
#include "media/ArtworkLoader.h"
#include "media/MediaButtonStyles.h"
#include "media/MediaProvider.h"
#include "media/MediaTexts.h"
#include "media/TrackPresentation.h"
#include "platform/AccessibilitySettings.h"
#include "ui/LocalTime.h"

namespace brindle {

MediaPresenter::MediaPresenter(MediaProvider &media, const ArtworkLoader &artwork,
    const SettingsStore &settings, const AccessibilitySettings &accessibility, QObject *parent)
    : QObject(parent)
    , m_media(media)
    , m_artwork(artwork)
    , m_settings(settings)
    , m_accessibility(accessibility)
{
    connect(&media, &MediaProvider::nowPlayingChanged, this, &MediaPresenter::playerChanged);
    connect(&artwork, &ArtworkLoader::loadedArtworkChanged, this, &MediaPresenter::playerChanged);
    connect(&settings, &SettingsStore::showMediaPlayerChanged, this, &MediaPresenter::blocksChanged);
    connect(&settings, &SettingsStore::showMediaClockChanged, this, &MediaPresenter::blocksChanged);
    connect(&settings, &SettingsStore::reduceEffectsChanged, this, &MediaPresenter::motionChanged);
    connect(
        &accessibility, &AccessibilitySettings::reduceMotionChanged, this, &MediaPresenter::motionChanged);
}

StageSubject MediaPresenter::player() const
{
    const auto &track = m_media.nowPlaying();
    if (!track)
        return {QStringLiteral("nothing"), {}};
    return {
        track->presentationID(), QVariant::fromValue(TrackPresentation(*track, m_artwork.artworkOf(*track)))};
}

bool MediaPresenter::showPlayer() const
{
    return m_settings.showMediaPlayer();
}

bool MediaPresenter::showClock() const
{
    return m_settings.showMediaClock();
}

Motion MediaPresenter::trackMotion() const
{
    return motion(Motion::makeSpring(0.46, 0.9, 0.14));
}

Motion MediaPresenter::playbackMotion() const
{
    return motion(Motion::makeEaseInOut(0.2));
}

Motion MediaPresenter::blockMotion() const
{
    return motion(Motion::makeSpring(0.34, 0.88, 0.06));
}

Motion MediaPresenter::artworkMotion() const
{
    return motion(Motion::makeEaseOut(0.24));
}

ButtonStyle MediaPresenter::controlStyle() const
{
    return mediaControlButtonStyle(reducesEffects());
}

ButtonStyle MediaPresenter::cardStyle() const
{
    return utilityButtonStyle(reducesEffects());
}

void MediaPresenter::togglePlayback()
{
    m_media.togglePlayback();
}

void MediaPresenter::previousTrack()
{
    m_media.previousTrack();
}

void MediaPresenter::nextTrack()
{
    m_media.nextTrack();
}

void MediaPresenter::seek(double seconds)
{
    m_media.seek(seconds);
}

MediaTrackAppearance MediaPresenter::appearance(double progress) const
{
    return MediaTrackAppearance::between(
        MediaTrackAppearance::active(reducesEffects()), MediaTrackAppearance::identity(), progress);
}

MediaLayout MediaPresenter::layout(QSizeF view, bool showPlayer, bool showClock, bool showWeather)
{
    return MediaLayout::of(view, showPlayer, showClock, showWeather);
}

StageSubject MediaPresenter::cards(const MediaLayout &layout)
{
    return layout.hasCards() ? StageSubject{QStringLiteral("cards"), QVariant::fromValue(layout)}
                             : StageSubject();
}

PlayerLayout MediaPresenter::playerLayout(QSizeF player)
{
    return PlayerLayout::of(player);
}

CardLayout MediaPresenter::cardLayout(QSizeF card)
{
    return CardLayout::of(card);
}

QString MediaPresenter::timeLabel(double seconds)
{
    return MediaTexts::timeLabel(seconds);
}

QString MediaPresenter::hourAndMinute(double seconds)
{
    return LocalTime::hourAndMinute(Date::fromReferenceSeconds(seconds));
}

QString MediaPresenter::weekday(double seconds)
{
    return LocalTime::weekday(Date::fromReferenceSeconds(seconds));
}

bool MediaPresenter::reducesEffects() const
{
    return m_settings.reduceEffects() || m_accessibility.reduceMotion();
}

Motion MediaPresenter::motion(const Motion &usual) const
{
    return reducesEffects() ? Motion::makeEaseInOut(0.12) : usual;
}

} // namespace brindle
