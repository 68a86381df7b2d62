#pragma once

#include "foundation/Scheduler.h"
#include "island/IslandContentAppearance.h"
#include "island/NotchShape.h"
#include "ui/FrameTicker.h"
#include "ui/Motion.h"
#include "ui/MotionTrack.h"
#include "ui/Stage.h"

#include <QObject>
#include <QPainterPath>
#include <QSizeF>
#include <QtQml/qqmlregistration.h>

#include <array>

namespace brindle {

class ActivityCoordinator;
class IslandViewModel;
class SettingsStore;

/// The black shape and which content is on it: sizes, radii, and when and how they change.
///
/// `size`, `shape` and `shadowOpacity` are what is drawn in this frame; `targetSize` and `targetShape` are
/// what the state asks for. The two differ only while an animation runs. Main thread; its view model outlives
/// it.
class IslandSurface : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("part of the island")
    Q_PROPERTY(double width READ width NOTIFY shapeChanged)
    Q_PROPERTY(double height READ height NOTIFY shapeChanged)
    Q_PROPERTY(double shoulder READ shoulder NOTIFY shapeChanged)
    Q_PROPERTY(bool isExpanded READ isExpanded NOTIFY stateChanged)
    Q_PROPERTY(bool isCollapsedContentVisible READ isCollapsedContentVisible NOTIFY stateChanged)
    /// How wide the closed island's content is; it follows events, and opening does not move it.
    Q_PROPERTY(double collapsedContentWidth READ collapsedContentWidth NOTIFY shapeChanged)
    Q_PROPERTY(double collapsedHeight READ collapsedHeight NOTIFY stateChanged)
    /// Of the open island's content; it does not take part in the animation.
    Q_PROPERTY(double expandedContentWidth READ expandedContentWidth NOTIFY stateChanged)
    /// What stands in the shape; its content is true for the open island's and false for the closed one's.
    Q_PROPERTY(brindle::StageSubject subject READ subject NOTIFY stateChanged)
    Q_PROPERTY(brindle::Motion openMotion READ openMotion NOTIFY motionChanged)
    Q_PROPERTY(brindle::Motion activityMotion READ activityMotion NOTIFY motionChanged)
    Q_PROPERTY(brindle::Motion revealMotion READ revealMotion NOTIFY motionChanged)

public:
    /// The panel's size in points, which is the open island's.
    static constexpr QSizeF panelSize{940, 300};

    explicit IslandSurface(IslandViewModel &viewModel, QObject *parent = nullptr);

    QSizeF targetSize() const;
    NotchShape targetShape() const;
    double targetShadowOpacity() const;
    /// The width of what stands in the island: what the shoulders leave, at least a point.
    static double contentWidthOf(double width, double topRadius);

    double width() const { return m_tracks[Width].value(); }
    double height() const { return m_tracks[Height].value(); }
    QSizeF size() const { return {width(), height()}; }
    NotchShape shape() const { return {m_tracks[TopRadius].value(), m_tracks[BottomRadius].value()}; }
    double shadowOpacity() const { return m_tracks[ShadowOpacity].value(); }
    double shoulder() const { return shape().shoulder(size()); }
    bool isMoving() const;
    /// The drawn outline, in points from the panel's top left corner.
    QPainterPath outline() const;

    bool isExpanded() const { return m_isExpanded; }
    bool isCollapsedContentVisible() const { return m_isCollapsedContentVisible; }
    double collapsedContentWidth() const { return m_tracks[CollapsedContentWidth].value(); }
    double collapsedHeight() const;
    double expandedContentWidth() const;
    const StageSubject &subject() const { return m_subject; }

    double contentWidth() const { return contentWidthOf(targetSize().width(), targetShape().topRadius); }
    Motion openMotion() const;
    Motion activityMotion() const;
    Motion revealMotion() const;
    /// Seconds from closing until the small content comes back.
    double revealDelay() const;
    bool isRevealPending() const { return m_reveal.isPending(); }

    /// How content on the stage looks, from 0 (gone) to 1 (there).
    Q_INVOKABLE brindle::IslandContentAppearance appearance(double progress) const;

Q_SIGNALS:
    /// The drawn shape is another one; once for each frame of an animation.
    void shapeChanged();
    void stateChanged();
    void motionChanged();

private:
    enum Track { Width, Height, TopRadius, BottomRadius, ShadowOpacity, CollapsedContentWidth, TrackCount };

    void observeSettings();
    QSizeF collapsedSize() const;
    std::array<double, TrackCount> targets() const;
    void expansionChanged();
    void activityChanged();
    void reveal();
    void showExpandedContent();
    void updateSubject();
    void moveBy(const Motion &motion);
    void followSettings();
    void tick(double seconds);
    bool reducesEffects() const;
    SettingsStore &settings() const;
    ActivityCoordinator &activities() const;

    IslandViewModel &m_viewModel;
    bool m_isExpanded;
    bool m_isCollapsedContentVisible = true;
    /// Ticks until the open island's content is due; 0 when none is.
    int m_ticksToContent = 0;
    QString m_activity;
    StageSubject m_subject;
    int m_scene = 0;
    std::array<MotionTrack, TrackCount> m_tracks;
    Motion m_lastMotion;
    FrameTicker m_ticker;
    /// Replacing it voids the reveal that was pending.
    Delay m_reveal;
};

} // namespace brindle
