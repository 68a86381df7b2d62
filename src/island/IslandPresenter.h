#pragma once

#include "island/CollapsedContent.h"
#include "island/ExpandedContent.h"
#include "island/IslandSurface.h"
#include "island/IslandViewModel.h"
#include "island/StatusBar.h"
#include "media/ArtworkLoader.h"
#include "media/MediaPresenter.h"
#include "ui/Clock.h"
#include "ui/Motion.h"

#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace brindle {

/// Everything that the island's views bind to, in one place. Main thread; the view model outlives it.
class IslandPresenter : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the host")
    Q_PROPERTY(brindle::IslandViewModel *viewModel READ viewModel CONSTANT)
    Q_PROPERTY(brindle::IslandSurface *surface READ surface CONSTANT)
    Q_PROPERTY(brindle::CollapsedContent *collapsed READ collapsed CONSTANT)
    Q_PROPERTY(brindle::ExpandedContent *expanded READ expanded CONSTANT)
    Q_PROPERTY(brindle::StatusBar *statusBar READ statusBar CONSTANT)
    Q_PROPERTY(brindle::MediaPresenter *media READ media CONSTANT)
    Q_PROPERTY(brindle::Clock *clock READ clock CONSTANT)
    /// How the last change of tab is to be shown.
    Q_PROPERTY(brindle::Motion selectionMotion READ selectionMotion NOTIFY selectionMotionChanged)
    Q_PROPERTY(int selectedTab READ selectedTab NOTIFY selectedTabChanged)
    /// What the desktop asks of all programs.
    Q_PROPERTY(bool reducesMotion READ reducesMotion NOTIFY reducesMotionChanged)

public:
    explicit IslandPresenter(IslandViewModel &viewModel, QObject *parent = nullptr);

    IslandViewModel *viewModel() { return &m_viewModel; }
    IslandSurface *surface() { return &m_surface; }
    CollapsedContent *collapsed() { return &m_collapsed; }
    ExpandedContent *expanded() { return &m_expanded; }
    StatusBar *statusBar() { return &m_statusBar; }
    MediaPresenter *media() { return &m_media; }
    Clock *clock() { return &m_clock; }
    Motion selectionMotion() const;
    int selectedTab() const { return int(m_viewModel.selectedTab()); }
    bool reducesMotion() const;

    /// A single tap on the island.
    Q_INVOKABLE void tapped();

Q_SIGNALS:
    /// Before the tab itself, so that what moves to the new tab knows how.
    void selectionMotionChanged();
    void selectedTabChanged();
    void reducesMotionChanged();

private:
    IslandViewModel &m_viewModel;
    IslandSurface m_surface;
    ArtworkLoader m_artwork;
    CollapsedContent m_collapsed;
    ExpandedContent m_expanded;
    StatusBar m_statusBar;
    MediaPresenter m_media;
    Clock m_clock;
};

} // namespace brindle
