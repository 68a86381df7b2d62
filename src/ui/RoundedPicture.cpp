#include "ui/RoundedPicture.h"

#include <QPainter>
#include <QQuickWindow>
#include <QSGImageNode>

#include <algorithm>
#include <array>

namespace brindle {

RoundedPicture::RoundedPicture(QQuickItem *parent) : QQuickItem(parent)
{
    setFlag(ItemHasContents);
}

void RoundedPicture::setPicture(const QImage &picture)
{
    if (picture.cacheKey() == m_picture.cacheKey())
        return;
    m_picture = picture;
    redraw();
}

void RoundedPicture::setRadius(double radius)
{
    if (radius == m_radius)
        return;
    m_radius = radius;
    redraw();
}

void RoundedPicture::setContinuous(bool continuous)
{
    if (continuous == m_isContinuous)
        return;
    m_isContinuous = continuous;
    redraw();
}

void RoundedPicture::redraw()
{
    m_isTextureStale = true;
    update();
    Q_EMIT changed();
}

void RoundedPicture::itemChange(ItemChange change, const ItemChangeData &value)
{
    if (change == ItemDevicePixelRatioHasChanged || change == ItemSceneChange) {
        m_isTextureStale = true;
        update();
    }
    QQuickItem::itemChange(change, value);
}

void RoundedPicture::geometryChange(const QRectF &geometry, const QRectF &old)
{
    QQuickItem::geometryChange(geometry, old);
    if (geometry.size() != old.size())
        m_isTextureStale = true;
    update();
}

QPainterPath RoundedPicture::continuousOutline(const QRectF &rect, double radius)
{
    // Each corner is two cubics that mirror each other at the diagonal. Where a corner leaves its edge, at
    // `reach`, three control points lie on the edge, so that it sets out straight; at the diagonal it touches
    // the circle of `radius` and bends as that does. In parts of the radius, from the corner:
    constexpr double reach = 1.5;
    constexpr double apex = 0.292893; // of the circle on the diagonal, in x as in y
    constexpr double tangent = 2 * apex; // where the circle's tangent there meets the edge
    constexpr double bend = 0.95; // gives the cubic the circle's curvature there

    const double unit = std::min(radius, std::min(rect.width(), rect.height()) / 2 / reach);
    // Corners in turn, each with the directions along the edge to it, backwards, and along the edge from it.
    struct Corner
    {
        QPointF place, back, on;
    };
    const std::array<Corner, 4> corners{{
        {rect.topLeft(), {0, 1}, {1, 0}},
        {rect.topRight(), {-1, 0}, {0, 1}},
        {rect.bottomRight(), {0, -1}, {-1, 0}},
        {rect.bottomLeft(), {1, 0}, {0, -1}},
    }};
    QPainterPath path(rect.topLeft() + QPointF(0, reach * unit));
    for (const auto &[place, back, on] : corners) {
        path.lineTo(place + back * (reach * unit));
        path.cubicTo(place + back * (bend * unit), place + back * (tangent * unit),
            place + (back + on) * (apex * unit));
        path.cubicTo(place + on * (tangent * unit), place + on * (bend * unit), place + on * (reach * unit));
    }
    path.closeSubpath();
    return path;
}

QImage RoundedPicture::rounded(QSize pixels, double scale) const
{
    const QImage filled = m_picture.scaled(pixels, Qt::KeepAspectRatioByExpanding, Qt::SmoothTransformation);
    QImage image(pixels, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    QBrush brush(filled);
    // Whole pixels, so that nothing is blurred.
    const int left = (pixels.width() - filled.width()) / 2;
    const int top = (pixels.height() - filled.height()) / 2;
    brush.setTransform(QTransform::fromTranslate(left, top));
    QPainterPath outline;
    if (m_isContinuous)
        outline = continuousOutline(image.rect(), m_radius * scale);
    else
        outline.addRoundedRect(image.rect(), m_radius * scale, m_radius * scale);
    painter.fillPath(outline, brush);
    return image;
}

QSGNode *RoundedPicture::updatePaintNode(QSGNode *old, UpdatePaintNodeData *)
{
    auto *node = static_cast<QSGImageNode *>(old);
    const double scale = window()->effectiveDevicePixelRatio();
    const QSize pixels = (size() * scale).toSize();
    if (!hasPicture() || pixels.isEmpty()) {
        delete node;
        return nullptr;
    }
    if (m_isTextureStale || !node) {
        if (!node) {
            node = window()->createImageNode();
            node->setOwnsTexture(true);
            node->setFiltering(QSGTexture::Linear);
        }
        node->setTexture(
            window()->createTextureFromImage(rounded(pixels, scale), QQuickWindow::TextureHasAlphaChannel));
        m_isTextureStale = false;
    }
    node->setRect(boundingRect());
    return node;
}

} // namespace brindle
