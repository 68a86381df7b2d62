#include "island/ExpandedContent.h"

#include "core/AppContainer.h"
#include "core/SettingsStore.h"
#include "island/IslandViewModel.h"
#include "platform/AccessibilitySettings.h"
#include "platform/Platform.h"

#include <algorithm>

namespace brindle {

ExpandedContent::ExpandedContent(IslandViewModel &viewModel, QObject *parent)
    : QObject(parent)
    , m_viewModel(viewModel)
{
    const AppContainer &container = viewModel.container();
    connect(&viewModel, &IslandViewModel::selectedTabChanged, this, &ExpandedContent::tabChanged);
    connect(&container.settings(), &SettingsStore::expandedContentBottomInsetChanged, this,
        &ExpandedContent::heightChanged);
    connect(&container.platform().accessibilitySettings(), &AccessibilitySettings::reduceMotionChanged, this,
        &ExpandedContent::motionChanged);
}

StageSubject ExpandedContent::tab() const
{
    const IslandTab tab = m_viewModel.selectedTab();
    return {QString::number(int(tab)), QVariant::fromValue(tab)};
}

double ExpandedContent::height() const
{
    return heightFor(m_viewModel.container().settings().expandedContentBottomInset());
}

double ExpandedContent::heightFor(double bottomInset)
{
    return std::max(258 - bottomInset, 120.0);
}

QUrl ExpandedContent::viewOf(IslandTab tab)
{
    return tab == IslandTab::media ? QUrl(QStringLiteral("MediaCalendarView.qml")) : QUrl();
}

Motion ExpandedContent::tabMotion() const
{
    const bool reduces = m_viewModel.container().platform().accessibilitySettings().reduceMotion();
    return reduces ? Motion::makeEaseInOut(0.12) : Motion::makeSpring(0.34, 0.88, 0.06);
}

} // namespace brindle
