#pragma once

#include "platform/PanelWindow.h"
#include "platform/linux/x11/X11InputShape.h"
#include "platform/linux/x11/X11Selection.h"
#include "platform/linux/x11/X11Stacking.h"

#include <memory>
#include <xcb/xcb.h>

class QQuickWindow;

namespace brindle {

/// The panel on X11: a window that no window manager handles, because only such a one stands over full-screen
/// windows.
class X11PanelWindow : public PanelWindow
{
    Q_OBJECT

public:
    X11PanelWindow(const PanelStyle &style, Scheduler &scheduler);
    ~X11PanelWindow() override;

    QRectF frame() const override;
    void setFrame(const QRectF &frame, FrameChange change) override;
    std::optional<Screen> screen() const override;
    void orderFrontRegardless() override;
    void makeKeyAndOrderFront() override;
    bool isKeyWindow() const override;
    bool isEditingText() const override;
    void setInputShape(const QPainterPath &shape) override;
    QQuickWindow *contentWindow() override;

private:
    void create();
    void followCompositor();
    void takeKeyboard();
    void giveKeyboardBack();
    bool hasKeyboard() const;

    PanelStyle m_style;
    std::unique_ptr<QQuickWindow> m_window;
    X11InputShape m_shape;
    X11Selection m_compositor{X11Selection::compositor};
    X11Stacking m_stacking;
    bool m_isPlaced = false;
    /// Who had the keyboard before the panel took it.
    xcb_window_t m_focusBefore = XCB_INPUT_FOCUS_NONE;
};

} // namespace brindle
