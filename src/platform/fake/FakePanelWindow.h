#pragma once

#include "platform/PanelWindow.h"

#include <QList>

namespace brindle {

/// A panel that only remembers what was done to it.
class FakePanelWindow : public PanelWindow
{
    Q_OBJECT

public:
    struct Placement
    {
        QRectF frame;
        FrameChange change;
    };

    FakePanelWindow(const PanelStyle &panelStyle, const Screens &screens);

    const PanelStyle style;
    QList<Placement> placements;
    int ordersFront = 0;
    int timesMadeKey = 0;
    bool isKey = false;
    bool isTextFieldFocused = false;
    QPainterPath inputShape;

    QRectF frame() const override { return m_frame; }
    void setFrame(const QRectF &frame, FrameChange change) override;
    std::optional<Screen> screen() const override;
    void orderFrontRegardless() override;
    void makeKeyAndOrderFront() override;
    bool isKeyWindow() const override { return isKey; }
    bool isEditingText() const override { return isTextFieldFocused; }
    void setInputShape(const QPainterPath &shape) override { inputShape = shape; }
    QQuickWindow *contentWindow() override { return nullptr; }

private:
    const Screens &m_screens;
    QRectF m_frame;
};

} // namespace brindle
