#include "island/CollapsedContent.h"

#include "activities/ActivityCoordinator.h"
#include "activities/BatteryMonitor.h"
#include "core/AppContainer.h"
#include "island/ActivityPresentation.h"
#include "island/MediaPresentation.h"
#include "media/ArtworkLoader.h"
#include "media/MediaProvider.h"
#include "platform/AccessibilitySettings.h"
#include "platform/Platform.h"

namespace brindle {

CollapsedContent::CollapsedContent(AppContainer &container, const ArtworkLoader &artwork, QObject *parent)
    : QObject(parent)
    , m_container(container)
    , m_artwork(artwork)
{
    connect(&container.activities(), &ActivityCoordinator::currentChanged, this,
        &CollapsedContent::subjectChanged);
    connect(&container.media(), &MediaProvider::nowPlayingChanged, this, &CollapsedContent::mediaChanged);
    connect(&artwork, &ArtworkLoader::loadedArtworkChanged, this, &CollapsedContent::mediaChanged);
    connect(&container.media(), &MediaProvider::outputVolumeChanged, this,
        &CollapsedContent::outputVolumeChanged);
    connect(&container.battery(), &BatteryMonitor::changed, this, &CollapsedContent::idleChanged);
    connect(&container.platform().accessibilitySettings(), &AccessibilitySettings::reduceMotionChanged, this,
        &CollapsedContent::motionChanged);
}

CollapsedContent::Kind CollapsedContent::kind() const
{
    if (m_container.activities().current())
        return Kind::activity;
    return m_container.media().nowPlaying() ? Kind::media : Kind::idle;
}

StageSubject CollapsedContent::subject() const
{
    if (const auto &activity = m_container.activities().current())
        return {activity->id.toString(), QVariant::fromValue(ActivityPresentation::of(*activity))};
    return {QStringLiteral("row"), {}};
}

StageSubject CollapsedContent::row() const
{
    if (const auto &track = m_container.media().nowPlaying())
        return {QStringLiteral("media"),
            QVariant::fromValue(MediaPresentation::of(*track, m_artwork.artworkOf(*track)))};
    return {QStringLiteral("idle"), {}};
}

StageSubject CollapsedContent::artwork() const
{
    const auto &track = m_container.media().nowPlaying();
    return track ? StageSubject{track->presentationID(),
                       QVariant::fromValue(MediaPresentation::of(*track, m_artwork.artworkOf(*track)))}
                 : StageSubject();
}

double CollapsedContent::outputVolume() const
{
    return m_container.media().outputVolume();
}

QString CollapsedContent::idleSymbol() const
{
    return m_container.battery().isCharging() ? QStringLiteral("battery.100percent.bolt")
                                              : QStringLiteral("capsule.tophalf.filled");
}

QString CollapsedContent::idleText() const
{
    const BatteryMonitor &battery = m_container.battery();
    return battery.isCharging() ? QStringLiteral("%1%").arg(battery.percentage()) : QStringLiteral("Velmora");
}

Motion CollapsedContent::mediaMotion() const
{
    return reducesMotion() ? Motion::makeEaseInOut(0.12) : Motion::makeSpring(0.4, 0.9, 0.1);
}

Motion CollapsedContent::levelMotion() const
{
    return reducesMotion() ? Motion::makeEaseOut(0.12) : Motion::makeSpring(0.34, 0.72, 0.16);
}

bool CollapsedContent::reducesMotion() const
{
    return m_container.platform().accessibilitySettings().reduceMotion();
}

} // namespace brindle
