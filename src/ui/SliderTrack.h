#pragma once

#include <QQuickPaintedItem>
#include <QtQml/qqmlregistration.h>

namespace brindle {

/// A slider's look: a line, filled up to the thumb. Painted, so that its edges are smooth under every
/// renderer.
class SliderTrack : public QQuickPaintedItem
{
    Q_OBJECT
    QML_ELEMENT
    /// How much of the way is done, 0 to 1.
    Q_PROPERTY(double fraction READ fraction WRITE setFraction NOTIFY changed)
    /// Points; 0 for a track without a thumb.
    Q_PROPERTY(double thumbRadius READ thumbRadius WRITE setThumbRadius NOTIFY changed)
    /// Points from either edge to the outermost place of the thumb's middle.
    Q_PROPERTY(double inset READ inset WRITE setInset NOTIFY changed)

public:
    /// Points.
    static constexpr double thickness = 4;

    explicit SliderTrack(QQuickItem *parent = nullptr);

    double fraction() const { return m_fraction; }
    void setFraction(double fraction);
    double thumbRadius() const { return m_thumbRadius; }
    void setThumbRadius(double radius);
    double inset() const { return m_inset; }
    void setInset(double inset);

    void paint(QPainter *painter) override;

Q_SIGNALS:
    void changed();

private:
    void set(double &field, double value);

    double m_fraction = 0;
    double m_thumbRadius = 0;
    double m_inset = 0;
};

} // namespace brindle
