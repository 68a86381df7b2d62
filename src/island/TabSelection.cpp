#include "island/TabSelection.h"

#include "core/AppContainer.h"
#include "core/SettingsStore.h"
#include "island/IslandViewModel.h"
#include "platform/AccessibilitySettings.h"
#include "platform/Platform.h"

namespace brindle {

namespace {

constexpr auto selectMotion = Motion::makeSpring(0.36, 0.82, 0.08);
constexpr auto mendMotion = Motion::makeSpring(0.34, 0.88, 0.06);

} // namespace

TabSelection::TabSelection(IslandViewModel &viewModel, QObject *parent)
    : QObject(parent)
    , m_viewModel(viewModel)
{
    connect(&viewModel.container().settings(), &SettingsStore::visibleTabsChanged, this, [this] {
        m_viewModel.animate(reducesMotion() ? Motion::plain() : mendMotion, [this] { keepLegal(); });
    });
    keepLegal();
}

void TabSelection::select(IslandTab tab)
{
    m_viewModel.animate(
        reducesMotion() ? Motion::plain() : selectMotion, [this, tab] { m_viewModel.setSelectedTab(tab); });
}

void TabSelection::step(int offset)
{
    const QList<IslandTab> tabs = m_viewModel.container().settings().visibleTabs();
    const qsizetype index = tabs.indexOf(m_viewModel.selectedTab());
    if (index >= 0)
        select(tabs[(index + offset + tabs.size()) % tabs.size()]);
}

void TabSelection::keepLegal()
{
    const QList<IslandTab> tabs = m_viewModel.container().settings().visibleTabs();
    if (!tabs.isEmpty() && !tabs.contains(m_viewModel.selectedTab()))
        m_viewModel.setSelectedTab(tabs.first());
}

bool TabSelection::reducesMotion() const
{
    return m_viewModel.container().platform().accessibilitySettings().reduceMotion();
}

} // namespace brindle
