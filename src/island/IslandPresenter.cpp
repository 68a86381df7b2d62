#include "island/IslandPresenter.h"

#include "core/AppContainer.h"
#include "platform/AccessibilitySettings.h"
#include "platform/Platform.h"

namespace brindle {

IslandPresenter::IslandPresenter(IslandViewModel &viewModel, QObject *parent)
    : QObject(parent)
    , m_viewModel(viewModel)
    , m_surface(viewModel)
    , m_artwork(viewModel.container().media(), viewModel.container().platform().urlSession(),
          viewModel.container().platform().makeSerialQueue(QStringLiteral("Artwork")),
          viewModel.container().platform().scheduler())
    , m_collapsed(viewModel.container(), m_artwork)
    , m_expanded(viewModel)
    , m_statusBar(viewModel.container())
    , m_media(viewModel.container().media(), m_artwork, viewModel.container().settings(),
          viewModel.container().platform().accessibilitySettings())
    , m_clock(viewModel.container().platform().scheduler())
{
    connect(&viewModel, &IslandViewModel::selectedTabChanged, this, &IslandPresenter::selectionMotionChanged);
    connect(&viewModel, &IslandViewModel::selectedTabChanged, this, &IslandPresenter::selectedTabChanged);
    connect(&viewModel.container().platform().accessibilitySettings(),
        &AccessibilitySettings::reduceMotionChanged, this, &IslandPresenter::reducesMotionChanged);
}

Motion IslandPresenter::selectionMotion() const
{
    return m_viewModel.selectionMotion();
}

bool IslandPresenter::reducesMotion() const
{
    return m_viewModel.container().platform().accessibilitySettings().reduceMotion();
}

void IslandPresenter::tapped()
{
    if (!m_viewModel.isExpanded())
        m_viewModel.expand();
}

} // namespace brindle
