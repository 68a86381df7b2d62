#pragma once

#include "activities/SystemActivity.h"
#include "island/IslandHost.h"
#include "support/ManualFrames.h"
#include "support/Session.h"

#include <QImage>
#include <QQuickItem>
#include <QQuickRenderControl>
#include <QQuickWindow>

#include <memory>

namespace brindle {

/// A panel whose content is drawn into pictures.
class PicturePanel : public FakePanelWindow
{
public:
    PicturePanel(const Screens &screens, QQuickWindow &window)
        : FakePanelWindow(PanelStyle(), screens)
        , m_window(window)
    { }

    QQuickWindow *contentWindow() override { return &m_window; }

private:
    QQuickWindow &m_window;
};

/// The whole island, drawn by the processor without a screen: time, frames and surroundings are the test's.
class IslandScene
{
public:
    /// `scale` is in device pixels for each point.
    explicit IslandScene(double scale = 1);
    /// A program whose window has drawn nothing yet.
    struct BeforeTheFirstFrame
    {
    };
    explicit IslandScene(BeforeTheFirstFrame tag, double scale = 1);
    ~IslandScene();

    Session session;

    IslandViewModel &viewModel() { return m_viewModel; }
    IslandPresenter &presenter() { return m_host->presenter(); }
    FakePanelWindow &panel() { return m_panel; }
    QQuickWindow &window() { return m_window; }
    QQuickRenderControl &control() { return m_control; }
    SettingsStore &settings() const { return session.container.settings(); }

    /// Lets time pass, with frames as they would come.
    void pass(double seconds);
    /// Long enough for every animation, but shorter than any event stays.
    void settle() { pass(1.3); }
    void open();

    void plug(int percentage, bool onMains, bool charging);
    void play(const NowPlayingTrack &track, double volume);
    void show(const SystemActivity &activity);
    /// Where the pointer goes with no button down, in points from the panel's top left corner.
    void point(QPointF position);
    /// A press, a move with the button down, or a release of the left button.
    void pointer(QEvent::Type type, QPointF position);
    void click(QPointF position);

    /// What is seen, before a quiet wallpaper.
    QImage picture();
    /// What the panel holds, on nothing.
    const QImage &content();

private:
    /// Kept from picture to picture: only what has changed is drawn again.
    QImage m_content;
    ManualFrames m_frames;
    IslandViewModel m_viewModel;
    QQuickRenderControl m_control;
    QQuickWindow m_window;
    PicturePanel m_panel;
    std::unique_ptr<IslandHost> m_host;
};

} // namespace brindle
