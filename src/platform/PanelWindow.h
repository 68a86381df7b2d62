#pragma once

#include "platform/Screens.h"

#include <QObject>
#include <QPainterPath>
#include <QRectF>
#include <QSizeF>

#include <optional>

class QQuickWindow;

namespace brindle {

/// How a panel is made. The defaults are the island's: a transparent area without decorations above
/// everything.
struct PanelStyle
{
    QSizeF placeholderSize{260, 38};
    /// Steps above the layer of the desktop's own bar or menu.
    int levelAboveMenuBar = 1;
    bool opaque = false;
    bool hasShadow = false;
    bool hidesOnDeactivate = false;
    bool joinsAllSpaces = true;
    bool stationary = true;
    bool overFullScreenWindows = true;
    bool movable = false;
    bool movableByBackground = false;
    bool titleVisible = false;
    bool titlebarTransparent = true;
    bool acceptsMouseMoved = true;
    bool canBecomeKey = true;
    bool canBecomeMain = false;

    bool operator==(const PanelStyle &) const = default;
};

/// A borderless window above all others, on every workspace, that takes part in neither task bar nor window
/// switcher.
///
/// Frames are in the coordinates of `Screens`. Nothing of the panel is opaque to the pointer but the input
/// shape: a click outside it reaches whatever lies below. The panel is never hidden once it was ordered
/// front. Main thread.
class PanelWindow : public QObject
{
    Q_OBJECT

public:
    enum class FrameChange { immediate, animated };

    using QObject::QObject;

    virtual QRectF frame() const = 0;
    /// `animated` asks for a short move where the window system has one; it may be immediate.
    virtual void setFrame(const QRectF &frame, FrameChange change) = 0;
    /// The display that holds most of the panel; absent before it was placed on one.
    virtual std::optional<Screen> screen() const = 0;

    /// Brings the panel above all windows without the keyboard, and shows it if need be. A panel that holds
    /// the keyboard gives it back to the window that had it before.
    virtual void orderFrontRegardless() = 0;
    /// Takes the keyboard for the panel's content, whatever application is in front, and brings the panel
    /// above all.
    virtual void makeKeyAndOrderFront() = 0;
    virtual bool isKeyWindow() const = 0;
    /// Whether what has the keyboard within the panel is a field that text is typed into.
    virtual bool isEditingText() const = 0;

    /// The area that takes the pointer, in points from the panel's top left corner, y downwards. Cheap enough
    /// to be called for each frame of an animation. Where the desktop cannot show transparency, the window is
    /// cut to it also.
    virtual void setInputShape(const QPainterPath &shape) = 0;

    /// Where the content is drawn; null for a panel that draws nothing.
    virtual QQuickWindow *contentWindow() = 0;
};

} // namespace brindle
