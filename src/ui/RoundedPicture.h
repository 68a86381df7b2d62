#pragma once

#include <QImage>
#include <QPainterPath>
#include <QQuickItem>
#include <QtQml/qqmlregistration.h>

namespace brindle {

/// A picture that fills its frame, with rounded corners. Shows nothing while it has none.
class RoundedPicture : public QQuickItem
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QImage picture READ picture WRITE setPicture NOTIFY changed)
    /// Points.
    Q_PROPERTY(double radius READ radius WRITE setRadius NOTIFY changed)
    /// Whether the edges pass into the corners without a sudden turn, which large corners want.
    Q_PROPERTY(bool isContinuous READ isContinuous WRITE setContinuous NOTIFY changed)
    Q_PROPERTY(bool hasPicture READ hasPicture NOTIFY changed)

public:
    explicit RoundedPicture(QQuickItem *parent = nullptr);

    QImage picture() const { return m_picture; }
    void setPicture(const QImage &picture);
    double radius() const { return m_radius; }
    void setRadius(double radius);
    bool isContinuous() const { return m_isContinuous; }
    void setContinuous(bool continuous);
    bool hasPicture() const { return !m_picture.isNull(); }

    /// A rectangle whose corners bend like circles of `radius` in their middle, and less and less towards the
    /// edges. The radius is cut down to what the rectangle has room for.
    static QPainterPath continuousOutline(const QRectF &rect, double radius);

Q_SIGNALS:
    void changed();

protected:
    QSGNode *updatePaintNode(QSGNode *old, UpdatePaintNodeData *data) override;
    void itemChange(ItemChange change, const ItemChangeData &value) override;
    void geometryChange(const QRectF &geometry, const QRectF &old) override;

private:
    void redraw();
    QImage rounded(QSize pixels, double scale) const;

    QImage m_picture;
    double m_radius = 0;
    bool m_isContinuous = false;
    bool m_isTextureStale = true;
};

} // namespace brindle
