#pragma once

#include "island/IslandPresenter.h"

#include <QObject>
#include <QQmlEngine>

#include <memory>

class QQuickItem;

namespace brindle {

class PanelWindow;

/// Draws the island into a panel's window and keeps the panel's input shape in step with what is drawn.
///
/// The window's first frame shows the shape, which can be used already; what stands in it is built on the
/// turn after. The view model and the panel outlive it. Main thread.
class IslandHost : public QObject
{
    Q_OBJECT

public:
    IslandHost(IslandViewModel &viewModel, PanelWindow &panel);
    ~IslandHost() override;

    IslandPresenter &presenter() { return m_presenter; }

private:
    void buildScene();
    void firstFrameDrawn();
    void shapeChanged();

    PanelWindow &m_panel;
    IslandPresenter m_presenter;
    QQmlEngine m_engine;
    std::unique_ptr<QQuickItem> m_root;
};

} // namespace brindle
