#pragma once

#include "core/AppContainer.h"
#include "core/AppDelegate.h"
#include "island/IslandPanelController.h"
#include "island/IslandSurface.h"
#include "island/SidebarNavigation.h"
#include "platform/fake/FakePlatform.h"
#include "simulation/SimulatedMedia.h"
#include "simulation/Trail.h"
#include "support/ManualFrames.h"

#include <QPointer>

#include <set>

namespace brindle::simulation {

/// What the panel holds here instead of a scene: the shape, with which the input shape is kept in step, and
/// the parts of the open island that have rules in them, made and dropped with it as the scene does.
class HeadlessContent : public QObject
{
public:
    HeadlessContent(IslandViewModel &viewModel, PanelWindow &panel);

    bool isOpen() const { return m_sidebar != nullptr; }
    const IslandSurface &surface() const { return m_surface; }

private:
    void follow();

    IslandViewModel &m_viewModel;
    IslandSurface m_surface;
    std::unique_ptr<SidebarNavigation> m_sidebar;
};

/// Learns what the person does, at the moment when it is done.
class PersonWatcher
{
public:
    virtual ~PersonWatcher() = default;

    /// The island was toggled or tapped.
    virtual void openedByHand() = 0;
    /// An interaction is about to end.
    virtual void interactionEnded() = 0;
    /// A drag is about to be reported over the island, or as gone from it.
    virtual void dragReported(bool isInside) = 0;
    virtual void buttonPressed() = 0;
    virtual void buttonReleased() = 0;
};

/// The whole program on a machine in memory, together with the person in front of it and the drag that the
/// person may carry.
class Program
{
public:
    Program();

    /// Lets the event happen, without ending the turn and without its pause.
    void apply(const Event &event);
    /// Lets time pass, with the frames that are drawn meanwhile.
    void pass(double seconds);

    AppContainer &container() { return *m_container; }
    IslandPanelController &controller() { return *m_delegate->panelController(); }
    IslandViewModel &island() { return controller().viewModel(); }
    const HeadlessContent &content() const { return *m_content; }

    /// Interactions of tabs that have begun and not ended.
    int interactions() const { return m_interactions; }
    bool isButtonDown() const { return (platform.input.buttons & 1) != 0; }
    /// How many launches there were; each has a new container and a new island.
    int launches() const { return m_launches; }

    ManualFrames frames;
    FakePlatform platform;
    SimulatedMedia media{platform};

    /// Who is told what the person does; may be null.
    PersonWatcher *watcher = nullptr;

private:
    void launch();
    void relaunch(bool isOrderly);
    QPointF place(const Event &event);
    QPointF inPanel(QPointF location);
    void movePointer(const Event &event);
    void reportDrag();
    void pressButton();
    void releaseButton(const Event &event);
    void staleDrag(const Event &event);
    void tap();
    void clickElsewhere(const Event &event);
    void pressKey(const Event &event);
    void scroll(const Event &event);
    void changeInteraction(bool begins);
    void layOutZones(const Event &event);
    void changeSetting(const Event &event);
    void postActivity(const Event &event);
    void changePower(const Event &event);
    void changeBluetooth(const Event &event);
    void changeBrightness(const Event &event);
    void pressMediaKey(const Event &event);
    void changeScreens(const Event &event);
    void commandMedia(const Event &event);

    std::unique_ptr<AppContainer> m_container;
    std::unique_ptr<AppDelegate> m_delegate;
    QPointer<HeadlessContent> m_content;
    bool m_isCarrying = false;
    bool m_isDragOver = false;
    int m_interactions = 0;
    int m_launches = 0;
    int m_posted = 0;
    double m_lastMediaKey = -1;
    std::set<unsigned> m_connectedDevices;
};

} // namespace brindle::simulation
