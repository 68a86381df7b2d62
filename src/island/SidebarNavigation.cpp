#include "island/SidebarNavigation.h"

#include "core/AppContainer.h"
#include "core/SettingsStore.h"
#include "island/IslandViewModel.h"
#include "island/SidebarScrollMonitor.h"
#include "island/TabPresentation.h"
#include "island/TabSelection.h"
#include "platform/AccessibilitySettings.h"
#include "platform/Platform.h"

#include <cmath>

namespace brindle {

namespace {

/// The feedback, in points, that would shrink the selected button to nothing.
constexpr double scaleRange = 180;

} // namespace

SidebarNavigation::SidebarNavigation(QObject *parent) : QObject(parent) { }

SidebarNavigation::~SidebarNavigation() = default;

void SidebarNavigation::setViewModel(IslandViewModel *viewModel)
{
    Q_ASSERT(viewModel && !m_viewModel);
    m_viewModel = viewModel;
    Platform &platform = viewModel->container().platform();
    m_selection = std::make_unique<TabSelection>(*viewModel);
    m_scrollMonitor = std::make_unique<SidebarScrollMonitor>(platform.eventMonitors(), platform.haptics(),
        SidebarScrollMonitor::Callbacks{
            [this](double progress) { showProgress(progress); },
            [this] { settle(); },
            [this](int offset) { m_selection->step(offset); },
        });
    m_scrollMonitor->setBounds(m_bounds);
    m_scrollMonitor->start();
    connect(&viewModel->container().settings(), &SettingsStore::visibleTabsChanged, this,
        &SidebarNavigation::tabsChanged);
    Q_EMIT viewModelChanged();
    Q_EMIT tabsChanged();
}

QVariantList SidebarNavigation::tabs() const
{
    QVariantList result;
    if (m_viewModel) {
        const QList<IslandTab> tabs = m_viewModel->container().settings().visibleTabs();
        for (const IslandTab tab : tabs)
            result << QVariant::fromValue(presentationOf(tab));
    }
    return result;
}

void SidebarNavigation::setBounds(const QRectF &bounds)
{
    if (m_bounds == bounds)
        return;
    m_bounds = bounds;
    if (m_scrollMonitor)
        m_scrollMonitor->setBounds(bounds);
    Q_EMIT boundsChanged();
}

void SidebarNavigation::select(IslandTab tab)
{
    m_selection->select(tab);
}

double SidebarNavigation::selectedScale(double scrollFeedback)
{
    return 1 - std::abs(scrollFeedback) / scaleRange;
}

void SidebarNavigation::showProgress(double progress)
{
    // For those who asked for less movement the highlight does not follow the fingers; the steps are made all
    // the same.
    if (!m_viewModel->container().platform().accessibilitySettings().reduceMotion())
        setScrollFeedback(progress * fullFeedback);
}

void SidebarNavigation::settle()
{
    Q_EMIT settled();
    setScrollFeedback(0);
}

void SidebarNavigation::setScrollFeedback(double feedback)
{
    if (m_scrollFeedback == feedback)
        return;
    m_scrollFeedback = feedback;
    Q_EMIT scrollFeedbackChanged();
}

} // namespace brindle
