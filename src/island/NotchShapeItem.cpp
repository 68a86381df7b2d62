#include "island/NotchShapeItem.h"

#include "ui/SoftShadow.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace brindle {

NotchShapeItem::NotchShapeItem(QQuickItem *parent) : QQuickPaintedItem(parent)
{
    setAntialiasing(true);
    setAcceptedMouseButtons(Qt::LeftButton);
}

void NotchShapeItem::setSurface(IslandSurface *surface)
{
    if (surface == m_surface)
        return;
    if (m_surface)
        disconnect(m_surface, nullptr, this, nullptr);
    m_surface = surface;
    if (surface)
        connect(surface, &IslandSurface::shapeChanged, this, &NotchShapeItem::shapeChanged);
    Q_EMIT surfaceChanged();
    shapeChanged();
}

QRectF NotchShapeItem::reach() const
{
    const QSizeF size = m_surface->size();
    const double margin = 1.5 * shadowRadius;
    const QRectF all(width() / 2 - size.width() / 2 - margin, 0, size.width() + 2 * margin,
        size.height() + shadowOffset + margin);
    return all.intersected(boundingRect());
}

void NotchShapeItem::shapeChanged()
{
    if (!m_surface)
        return;
    const QRectF now = reach();
    update(m_painted.united(now).toAlignedRect());
    m_painted = now;
}

void NotchShapeItem::paint(QPainter *painter)
{
    if (!m_surface)
        return;
    const QSizeF size = m_surface->size();
    const NotchShape shape = m_surface->shape();
    const int rows = int(std::ceil(std::min(height(), size.height() + shadowOffset + 1.5 * shadowRadius)));
    const SoftShadow shadow(shape.halfWidths(size), shadowRadius / 2, -int(shadowOffset),
        rows - int(shadowOffset), m_surface->shadowOpacity());
    shadow.paint(*painter, QPointF(width() / 2, shadowOffset));
    painter->setRenderHint(QPainter::Antialiasing);
    painter->fillPath(shape.path(size).translated((width() - size.width()) / 2, 0), Qt::black);
}

void NotchShapeItem::mousePressEvent(QMouseEvent *event)
{
    event->accept();
}

void NotchShapeItem::mouseReleaseEvent(QMouseEvent *event)
{
    if (contains(event->position()))
        Q_EMIT tapped();
}

bool NotchShapeItem::contains(const QPointF &point) const
{
    return m_surface && m_surface->outline().contains(point);
}

} // namespace brindle
