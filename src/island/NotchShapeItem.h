#pragma once

#include "island/IslandSurface.h"

#include <QPointer>
#include <QQuickPaintedItem>
#include <QtQml/qqmlregistration.h>

namespace brindle {

/// Paints the black shape of a surface with its shadow, and takes the pointer where the shape is and nowhere
/// else.
///
/// It has the panel's size; only what the shape and its shadow touch is painted, and only when the shape
/// changes.
class NotchShapeItem : public QQuickPaintedItem
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(brindle::IslandSurface *surface READ surface WRITE setSurface NOTIFY surfaceChanged REQUIRED)

public:
    /// The shadow's blur radius and vertical offset, in points.
    static constexpr double shadowRadius = 24;
    static constexpr double shadowOffset = 12;

    explicit NotchShapeItem(QQuickItem *parent = nullptr);

    IslandSurface *surface() const { return m_surface; }
    void setSurface(IslandSurface *surface);

    void paint(QPainter *painter) override;
    bool contains(const QPointF &point) const override;

Q_SIGNALS:
    void surfaceChanged();
    /// The primary button went down and up in the shape.
    void tapped();

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;

private:
    void shapeChanged();
    QRectF reach() const;

    QPointer<IslandSurface> m_surface;
    QRectF m_painted;
};

} // namespace brindle
