#pragma once

#include "foundation/Lifetime.h"
#include "island/PanelContent.h"

#include <memory>

namespace brindle {

class AppContainer;
class IslandPanelController;

/// Turns the launch of the program into a visible island, and its end into an orderly stop.
///
/// Built once, on the container, by the entry point, which reports the launch and the end. Main thread.
class AppDelegate
{
public:
    /// `makeContent` draws into the panel; without one the panel stays empty.
    explicit AppDelegate(AppContainer &container, PanelContentFactory makeContent = {});
    ~AppDelegate();
    AppDelegate(const AppDelegate &) = delete;
    AppDelegate &operator=(const AppDelegate &) = delete;

    /// Returns at once; the island is shown on the next turn.
    void applicationDidFinishLaunching();
    void applicationWillTerminate();

    /// Null until the island was first shown.
    IslandPanelController *panelController() const { return m_panelController.get(); }

private:
    void installMenu();
    void configureLaunchAtLogin();
    void bringUp();

    AppContainer &m_container;
    PanelContentFactory m_makeContent;
    std::unique_ptr<IslandPanelController> m_panelController;
    Lifetime m_lifetime;
};

} // namespace brindle
