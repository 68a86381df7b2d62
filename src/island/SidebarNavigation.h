#pragma once

#include "core/IslandTab.h"
#include "ui/Motion.h"

#include <QObject>
#include <QRectF>
#include <QVariantList>

#include <memory>

namespace brindle {

class IslandViewModel;
class SidebarScrollMonitor;
class TabSelection;

/// What the sidebar of the open island knows and does: its tabs, the highlight under the fingers, and the
/// steps that taps and scrolls make.
///
/// Made with the open island, by setting `viewModel` (once), and dropped with it: the selection is kept among
/// the visible tabs and scrolls are watched that long. The view model outlives it. Main thread.
class SidebarNavigation : public QObject
{
    Q_OBJECT
    Q_PROPERTY(brindle::IslandViewModel *viewModel READ viewModel WRITE setViewModel NOTIFY viewModelChanged
            REQUIRED)
    /// The visible tabs in their order, each a `TabPresentation`.
    Q_PROPERTY(QVariantList tabs READ tabs NOTIFY tabsChanged)
    /// Where the sidebar is, in points from the panel's top left corner, y downwards.
    Q_PROPERTY(QRectF bounds READ bounds WRITE setBounds NOTIFY boundsChanged)
    /// Vertical displacement of the highlight, in points, to be shown as it is; but see `settled`.
    Q_PROPERTY(double scrollFeedback READ scrollFeedback NOTIFY scrollFeedbackChanged)
    /// The spring by which the highlight goes back to rest.
    Q_PROPERTY(brindle::Motion settleMotion READ settleMotion CONSTANT)

public:
    /// How far a full swipe moves the highlight, in points.
    static constexpr double fullFeedback = 7;

    explicit SidebarNavigation(QObject *parent = nullptr);
    ~SidebarNavigation() override;

    IslandViewModel *viewModel() const { return m_viewModel; }
    void setViewModel(IslandViewModel *viewModel);
    QVariantList tabs() const;
    QRectF bounds() const { return m_bounds; }
    void setBounds(const QRectF &bounds);
    double scrollFeedback() const { return m_scrollFeedback; }
    static Motion settleMotion() { return Motion::makeSpring(0.24, 0.78, 0); }

    /// Null until there is a view model.
    SidebarScrollMonitor *scrollMonitor() const { return m_scrollMonitor.get(); }

    /// Selects a tab as a tap on it does.
    Q_INVOKABLE void select(brindle::IslandTab tab);
    /// The scale of the selected tab's button under a highlight that is displaced by so many points.
    Q_INVOKABLE static double selectedScale(double scrollFeedback);

Q_SIGNALS:
    void viewModelChanged();
    void tabsChanged();
    void boundsChanged();
    void scrollFeedbackChanged();
    /// The gesture is over: right after this the feedback becomes 0, and is to go there by `settleMotion`.
    void settled();

private:
    void showProgress(double progress);
    void settle();
    void setScrollFeedback(double feedback);

    IslandViewModel *m_viewModel = nullptr;
    std::unique_ptr<TabSelection> m_selection;
    std::unique_ptr<SidebarScrollMonitor> m_scrollMonitor;
    QRectF m_bounds;
    double m_scrollFeedback = 0;
};

} // namespace brindle
