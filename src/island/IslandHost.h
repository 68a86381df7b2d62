#pragma once

#include "island/IslandPresenter.h"

#include <QAccessible>
#include <QObject>

#include <memory>

class QQmlEngine;
class QQuickItem;

namespace brindle {

class NotchShapeItem;
class PanelWindow;

/// Draws the island into a panel's window and keeps the panel's input shape in step with what is drawn.
///
/// The window's first frame shows the shape alone, which can be tapped already; the scene with all that
/// stands in it, and the engine behind it, are made on the turn after. Where somebody reads the screen with
/// assistive tools they are made before all: of items that they meet before there is an engine those tools
/// learn nothing for as long as the program runs. The view model and the panel outlive it. Main thread.
class IslandHost : public QObject, private QAccessible::ActivationObserver
{
    Q_OBJECT

public:
    IslandHost(IslandViewModel &viewModel, PanelWindow &panel);
    ~IslandHost() override;

    IslandPresenter &presenter() { return m_presenter; }

private:
    void accessibilityActiveChanged(bool active) override;
    void showShape();
    /// Once.
    void buildScene();
    void shapeChanged();

    PanelWindow &m_panel;
    IslandPresenter m_presenter;
    /// Until the scene, which has a shape of its own, is there.
    std::unique_ptr<NotchShapeItem> m_firstShape;
    std::unique_ptr<QQmlEngine> m_engine;
    std::unique_ptr<QQuickItem> m_root;
};

} // namespace brindle
