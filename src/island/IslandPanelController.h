#pragma once

#include "foundation/Lifetime.h"
#include "foundation/Subscription.h"
#include "island/IslandPanel.h"
#include "island/IslandViewModel.h"
#include "island/PanelContent.h"
#include "platform/EventMonitors.h"

#include <QObject>

#include <memory>
#include <optional>

namespace brindle {

/// Owns the island's window and its state, places the window on a display, and turns what comes from outside
/// (pointer, clicks, keys, changes of screens, the toggle message) into calls on the view model.
///
/// Keeps no state of its own. From `show()` on the panel stays in front of everything. Main thread.
class IslandPanelController : public QObject
{
    Q_OBJECT

public:
    explicit IslandPanelController(AppContainer &container, const PanelContentFactory &makeContent = {});
    ~IslandPanelController() override;

    IslandViewModel &viewModel() { return m_viewModel; }
    IslandPanel &panel() { return m_panel; }

    /// Places the panel, brings it to the front and looks where the pointer is.
    void show();

    /// What counts as the island for the pointer, in the coordinates of `Screens`.
    QRectF interactiveRectangle() const;

private:
    template <typename Source, typename Signal, typename Read, typename Act>
    void observe(Source &source, Signal signal, Read read, Act act);
    void setUpObservations();
    void setUpMonitors();
    void setUpObservers();

    std::optional<Screen> chooseScreen() const;
    void reposition();
    void synchronizePointer();
    void synchronizePointerLater();
    void expansionChanged(bool isExpanded);
    void clickedOutside();
    EventMonitors::Disposition keyDown(const InputEvent &event);
    bool togglesPlayback(const InputEvent &event) const;

    AppContainer &m_container;
    IslandViewModel m_viewModel;
    IslandPanel m_panel;
    std::unique_ptr<QObject> m_content;
    Subscription m_outsideClickMonitor;
    Subscription m_keyDownMonitor;
    Subscription m_localPointerMonitor;
    Subscription m_globalPointerMonitor;
    QMetaObject::Connection m_screenObserver;
    Subscription m_toggleObserver;
    Lifetime m_lifetime;
};

} // namespace brindle
