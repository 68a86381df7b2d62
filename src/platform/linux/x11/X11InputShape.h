#pragma once

#include <QPainterPath>
#include <QRegion>

class QQuickWindow;

namespace brindle {

/// Limits a window on X11 to a shape: to the pointer always, and to the eye where nothing composes
/// transparency.
class X11InputShape
{
public:
    explicit X11InputShape(QQuickWindow &window) : m_window(window) { }

    /// In points of the window. An empty path takes no pointer at all.
    void set(const QPainterPath &path);
    /// Whether the drawing is cut to the shape as well.
    void setCutsDrawing(bool cuts);
    /// Tells the server again, after the window was made or its scale changed.
    void apply();

    /// The shape in device pixels.
    const QRegion &region() const { return m_region; }

private:
    QRegion inDevicePixels() const;

    QQuickWindow &m_window;
    QPainterPath m_path;
    QRegion m_region;
    bool m_cutsDrawing = false;
    bool m_isApplied = false;
};

} // namespace brindle
