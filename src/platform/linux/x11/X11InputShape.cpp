#include "platform/linux/x11/X11InputShape.h"

#include "platform/linux/x11/XcbConnection.h"

#include <QQuickWindow>
#include <QTransform>

#include <vector>
#include <xcb/shape.h>

namespace brindle {

namespace {

std::vector<xcb_rectangle_t> rectangles(const QRegion &region)
{
    std::vector<xcb_rectangle_t> result;
    result.reserve(size_t(region.rectCount()));
    for (const QRect &rect : region)
        result.push_back(
            {int16_t(rect.x()), int16_t(rect.y()), uint16_t(rect.width()), uint16_t(rect.height())});
    return result;
}

} // namespace

void X11InputShape::set(const QPainterPath &path)
{
    if (m_isApplied && path == m_path)
        return;
    m_path = path;
    // Successive frames of an animation often differ by less than a pixel.
    if (m_isApplied && inDevicePixels() == m_region)
        return;
    apply();
}

QRegion X11InputShape::inDevicePixels() const
{
    const double scale = m_window.devicePixelRatio();
    return m_path.toFillPolygon(QTransform::fromScale(scale, scale)).toPolygon();
}

void X11InputShape::setCutsDrawing(bool cuts)
{
    if (m_cutsDrawing == cuts)
        return;
    m_cutsDrawing = cuts;
    if (!m_window.handle())
        return;
    if (!cuts)
        xcb_shape_mask(Xcb::connection(), XCB_SHAPE_SO_SET, XCB_SHAPE_SK_BOUNDING,
            xcb_window_t(m_window.winId()), 0, 0, XCB_PIXMAP_NONE);
    apply();
}

void X11InputShape::apply()
{
    m_region = inDevicePixels();
    if (!m_window.handle())
        return;
    const auto rects = rectangles(m_region);
    const auto limit = [&](xcb_shape_sk_t kind) {
        xcb_shape_rectangles(Xcb::connection(), XCB_SHAPE_SO_SET, kind, XCB_CLIP_ORDERING_YX_BANDED,
            xcb_window_t(m_window.winId()), 0, 0, uint32_t(rects.size()), rects.data());
    };
    limit(XCB_SHAPE_SK_INPUT);
    if (m_cutsDrawing)
        limit(XCB_SHAPE_SK_BOUNDING);
    xcb_flush(Xcb::connection());
    m_isApplied = true;
}

} // namespace brindle
