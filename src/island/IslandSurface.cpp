#include "island/IslandSurface.h"

#include "activities/ActivityCoordinator.h"
#include "core/AppContainer.h"
#include "core/SettingsStore.h"
#include "island/IslandViewModel.h"
#include "platform/AccessibilitySettings.h"
#include "platform/Platform.h"

#include <algorithm>

namespace brindle {
namespace {

constexpr NotchShape collapsedShape{14, 18};
/// No animation is livelier than this, however short the user wants it.
constexpr double shortestAnimation = 0.48;
/// An opening shows its first frame before what stands in the open island is built: one tick is for that
/// frame, and the next comes after it.
constexpr int ticksBeforeContent = 2;
/// When the tracks count as arrived: a twentieth of a point, or a step of the shadow's darkness, cannot be
/// seen.
constexpr std::array precisions{0.05, 0.05, 0.05, 0.05, 0.002, 0.05};

QString idOf(const ActivityCoordinator &activities)
{
    return activities.current() ? activities.current()->id.toString() : QString();
}

} // namespace

IslandSurface::IslandSurface(IslandViewModel &viewModel, QObject *parent)
    : QObject(parent)
    , m_viewModel(viewModel)
    , m_isExpanded(viewModel.isExpanded())
    , m_activity(idOf(viewModel.container().activities()))
    , m_ticker([this](double seconds) { tick(seconds); })
{
    const auto values = targets();
    for (std::size_t i = 0; i < TrackCount; ++i)
        m_tracks[i] = MotionTrack(values[i], precisions[i]);
    connect(&viewModel, &IslandViewModel::isExpandedChanged, this, &IslandSurface::expansionChanged);
    connect(&activities(), &ActivityCoordinator::currentChanged, this, &IslandSurface::activityChanged);
    observeSettings();
    updateSubject();
}

void IslandSurface::observeSettings()
{
    const SettingsStore *store = &settings();
    const auto follow = &IslandSurface::followSettings;
    connect(store, &SettingsStore::collapsedWidthChanged, this, follow);
    connect(store, &SettingsStore::collapsedHeightChanged, this, follow);
    connect(store, &SettingsStore::topCornerRadiusChanged, this, follow);
    connect(store, &SettingsStore::expandedCornerRadiusChanged, this, follow);
    connect(
        store, &SettingsStore::collapsedActivityExpansionChanged, this, [this] { moveBy(activityMotion()); });
    connect(store, &SettingsStore::animationDurationChanged, this, &IslandSurface::motionChanged);
    connect(store, &SettingsStore::reduceEffectsChanged, this, &IslandSurface::motionChanged);
    connect(&m_viewModel.container().platform().accessibilitySettings(),
        &AccessibilitySettings::reduceMotionChanged, this, &IslandSurface::motionChanged);
}

SettingsStore &IslandSurface::settings() const
{
    return m_viewModel.container().settings();
}

ActivityCoordinator &IslandSurface::activities() const
{
    return m_viewModel.container().activities();
}

bool IslandSurface::reducesEffects() const
{
    return m_viewModel.reducesEffects();
}

QSizeF IslandSurface::targetSize() const
{
    return m_isExpanded ? panelSize : collapsedSize();
}

QSizeF IslandSurface::collapsedSize() const
{
    const double expansion =
        activities().current() ? std::max(settings().collapsedActivityExpansion(), 0.0) : 0.0;
    return {settings().collapsedWidth() + expansion, settings().collapsedHeight()};
}

NotchShape IslandSurface::targetShape() const
{
    return m_isExpanded ? NotchShape{settings().topCornerRadius(), settings().expandedCornerRadius()}
                        : collapsedShape;
}

double IslandSurface::targetShadowOpacity() const
{
    return m_isExpanded ? 0.42 : 0.25;
}

double IslandSurface::contentWidthOf(double width, double topRadius)
{
    return std::max(width - 2 * topRadius, 1.0);
}

double IslandSurface::collapsedHeight() const
{
    return settings().collapsedHeight();
}

double IslandSurface::expandedContentWidth() const
{
    return contentWidthOf(panelSize.width(), settings().topCornerRadius());
}

bool IslandSurface::isMoving() const
{
    return std::any_of(
        m_tracks.begin(), m_tracks.end(), [](const MotionTrack &track) { return track.isMoving(); });
}

QPainterPath IslandSurface::outline() const
{
    return shape().path(size()).translated((panelSize.width() - width()) / 2, 0);
}

Motion IslandSurface::openMotion() const
{
    return reducesEffects()
        ? Motion::makeEaseInOut(0.12)
        : Motion::makeSpring(std::max(settings().animationDuration(), shortestAnimation), 0.92, 0.16);
}

Motion IslandSurface::activityMotion() const
{
    return reducesEffects() ? Motion::makeEaseInOut(0.14) : Motion::makeSpring(0.42, 0.9, 0.12);
}

Motion IslandSurface::revealMotion() const
{
    if (reducesEffects())
        return Motion::makeEaseOut(0.1);
    const double duration = settings().animationDuration();
    return Motion::makeEaseOut(duration <= shortestAnimation ? 0.24 : std::max(duration * 0.5, 0.2));
}

double IslandSurface::revealDelay() const
{
    return reducesEffects() ? 0.02 : 0.115 * std::max(settings().animationDuration(), shortestAnimation);
}

IslandContentAppearance IslandSurface::appearance(double progress) const
{
    return IslandContentAppearance::between(
        IslandContentAppearance::active(reducesEffects()), IslandContentAppearance::identity(), progress);
}

void IslandSurface::expansionChanged()
{
    m_isExpanded = m_viewModel.isExpanded();
    m_isCollapsedContentVisible = false;
    m_ticksToContent = m_isExpanded ? ticksBeforeContent : 0;
    m_reveal = m_isExpanded
        ? Delay()
        : m_viewModel.container().platform().scheduler().after(revealDelay(), [this] { reveal(); });
    updateSubject();
    Q_EMIT stateChanged();
    moveBy(openMotion());
}

void IslandSurface::reveal()
{
    if (m_isExpanded)
        return;
    m_isCollapsedContentVisible = true;
    updateSubject();
    Q_EMIT stateChanged();
}

void IslandSurface::showExpandedContent()
{
    m_ticksToContent = 0;
    updateSubject();
    Q_EMIT stateChanged();
}

void IslandSurface::activityChanged()
{
    const QString activity = idOf(activities());
    if (activity == m_activity)
        return;
    m_activity = activity;
    moveBy(activityMotion());
}

void IslandSurface::followSettings()
{
    Q_EMIT stateChanged();
    // A slider that is dragged is followed at once; an animation under way gets a new end.
    moveBy(isMoving() ? m_lastMotion : Motion());
}

void IslandSurface::updateSubject()
{
    // A new key for each scene: an open island is built afresh each time.
    const bool isExpandedContentVisible = m_isExpanded && m_ticksToContent == 0;
    if (isExpandedContentVisible || m_isCollapsedContentVisible)
        m_subject = {QString::number(++m_scene), m_isExpanded};
    else
        m_subject = {};
}

std::array<double, IslandSurface::TrackCount> IslandSurface::targets() const
{
    const QSizeF size = targetSize();
    const NotchShape shape = targetShape();
    return {size.width(), size.height(), shape.topRadius, shape.bottomRadius, targetShadowOpacity(),
        contentWidthOf(collapsedSize().width(), collapsedShape.topRadius)};
}

void IslandSurface::moveBy(const Motion &motion)
{
    const auto values = targets();
    for (std::size_t i = 0; i < TrackCount; ++i)
        m_tracks[i].retarget(values[i], motion);
    m_lastMotion = motion;
    if (isMoving())
        m_ticker.run();
    else
        m_ticker.rest();
    Q_EMIT shapeChanged();
}

void IslandSurface::tick(double seconds)
{
    for (MotionTrack &track : m_tracks)
        track.advance(seconds);
    if (!isMoving())
        m_ticker.rest();
    Q_EMIT shapeChanged();
    if (m_ticksToContent == 0)
        return;
    --m_ticksToContent;
    if (m_ticksToContent == 0 || !isMoving())
        showExpandedContent();
}

} // namespace brindle
