#pragma once

#include "core/IslandTab.h"
#include "foundation/Scheduler.h"
#include "ui/Motion.h"

#include <QObject>
#include <QPointF>
#include <QRectF>

#include <functional>
#include <optional>

class QMimeData;

namespace brindle {

class AppContainer;
class ShelfDropTarget;

/// Where a drag from another program may be dropped in the open island.
enum class IslandExternalDropZone { airDrop, storage };

/// The frames of the drop zones as they are laid out now, in the island's drop coordinate space.
struct IslandExternalDropFrames
{
    std::optional<QRectF> airDrop;
    std::optional<QRectF> storage;

    bool operator==(const IslandExternalDropFrames &) const = default;
};

/// The state machine of the island: whether it is open, which tab shows, and what keeps it open.
///
/// Draws nothing and owns no window. While a drag from outside is active, `interactionDepth` includes exactly
/// one count for it. Each signal comes only when its value changed. Main thread.
class IslandViewModel : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool isExpanded READ isExpanded NOTIFY isExpandedChanged)
    Q_PROPERTY(brindle::IslandTab selectedTab READ selectedTab WRITE setSelectedTab NOTIFY selectedTabChanged)
    Q_PROPERTY(brindle::Motion selectionMotion READ selectionMotion NOTIFY selectedTabChanged)
    Q_PROPERTY(bool isPointerInside READ isPointerInside NOTIFY isPointerInsideChanged)
    Q_PROPERTY(int interactionDepth READ interactionDepth NOTIFY interactionDepthChanged)
    Q_PROPERTY(bool isExternalDragActive READ isExternalDragActive NOTIFY isExternalDragActiveChanged)

public:
    /// `shelf` is where drops go; without one every drop is refused. Both outlive the view model.
    explicit IslandViewModel(
        AppContainer &container, ShelfDropTarget *shelf = nullptr, QObject *parent = nullptr);

    AppContainer &container() const { return m_container; }
    bool isExpanded() const { return m_isExpanded; }
    IslandTab selectedTab() const { return m_selectedTab; }
    void setSelectedTab(IslandTab tab);
    bool isPointerInside() const { return m_isPointerInside; }
    int interactionDepth() const { return m_interactionDepth; }
    bool isExternalDragActive() const { return m_isExternalDragActive; }
    std::optional<IslandExternalDropZone> activeExternalDropZone() const { return m_activeExternalDropZone; }

    /// How the last change of `selectedTab` is to be shown; it is in place before that change is announced.
    Motion selectionMotion() const { return m_selectionMotion; }
    /// Runs `change`; a tab that it selects is shown with `motion`. Outside of this, selections are not
    /// animated.
    void animate(const Motion &motion, const std::function<void()> &change);
    /// Whether the user or the desktop asked for plain effects.
    bool reducesEffects() const;

    void pointerEntered();
    void pointerExited();
    Q_INVOKABLE void expand();
    /// `force` closes whatever is under way inside.
    void collapse(bool force);
    void toggle();
    /// `offset` is +1 or -1; the selection wraps at both ends of the visible tabs.
    void selectAdjacentTab(int offset);
    Q_INVOKABLE void beginInteraction();
    Q_INVOKABLE void endInteraction();

    void externalDragEntered(QPointF location);
    void externalDragUpdated(QPointF location);
    void externalDragExited();
    /// `location` is where the button went up, `items` what was carried. False when nothing took the drop.
    bool performExternalDrop(QPointF location, const QMimeData *items = nullptr);
    void endExternalDrag();
    void dropFramesChanged(const IslandExternalDropFrames &frames);
    /// `storage` wins where the zones overlap.
    std::optional<IslandExternalDropZone> dropZone(QPointF location) const;

    /// Whether either of the tasks that end a drag is still waiting.
    bool isExternalDragTaskPending() const
    {
        return m_externalDragExitTask.isPending() || m_externalDragMouseUpTask.isPending();
    }
    bool isCollapsePending() const { return m_collapseTask.isPending(); }
    bool isHoverPending() const { return m_hoverTask.isPending(); }

Q_SIGNALS:
    void isExpandedChanged();
    void selectedTabChanged();
    void isPointerInsideChanged();
    void interactionDepthChanged();
    void isExternalDragActiveChanged();
    void activeExternalDropZoneChanged();

private:
    void setExpanded(bool expanded);
    void setPointerInside(bool inside);
    void setInteractionDepth(int depth);
    void setExternalDragActive(bool active);
    void setActiveExternalDropZone(std::optional<IslandExternalDropZone> zone);
    Scheduler &scheduler() const;
    void openWithHaptic();
    bool isPrimaryButtonDown() const;
    void startExternalDrag();
    void updateActiveDropZone(QPointF location);
    void watchExternalDragMouseUp();
    void endExternalDragOnceReleased();
    std::optional<IslandExternalDropZone> zoneOfDrop(QPointF location) const;
    bool deliverDrop(QPointF location, const QMimeData *items);

    AppContainer &m_container;
    ShelfDropTarget *m_shelf;
    bool m_isExpanded = false;
    IslandTab m_selectedTab = IslandTab::media;
    Motion m_selectionMotion;
    Motion m_motionOfChanges;
    bool m_isPointerInside = false;
    int m_interactionDepth = 0;
    bool m_isExternalDragActive = false;
    std::optional<IslandExternalDropZone> m_activeExternalDropZone;
    IslandExternalDropFrames m_externalDropFrames;
    std::optional<QPointF> m_lastExternalDragLocation;
    std::optional<IslandExternalDropZone> m_lastExternalDropZone;
    Date m_lastExternalDropZoneDate = Date::distantPast();
    Delay m_hoverTask;
    Delay m_collapseTask;
    Delay m_externalDragExitTask;
    Delay m_externalDragMouseUpTask;
};

} // namespace brindle
