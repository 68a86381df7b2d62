#pragma once

#include <QQuickPaintedItem>
#include <QtQml/qqmlregistration.h>

namespace brindle {

/// A `FluidSystemLevel`, painted for one moment. Its frame is larger than the level's by `margin` on each
/// side, for the glow.
class FluidLevelBar : public QQuickPaintedItem
{
    Q_OBJECT
    QML_ELEMENT
    /// 0 to 1.
    Q_PROPERTY(double value READ value WRITE setValue NOTIFY changed)
    /// Seconds since the start of 2001, UTC.
    Q_PROPERTY(double seconds READ seconds WRITE setSeconds NOTIFY changed)
    Q_PROPERTY(bool isLive READ isLive WRITE setLive NOTIFY changed)
    Q_PROPERTY(double interval READ interval CONSTANT)
    Q_PROPERTY(double margin READ margin CONSTANT)

public:
    explicit FluidLevelBar(QQuickItem *parent = nullptr);

    double value() const { return m_value; }
    void setValue(double value);
    double seconds() const { return m_seconds; }
    void setSeconds(double seconds);
    bool isLive() const { return m_isLive; }
    void setLive(bool live);
    static double interval();
    static double margin() { return 5; }

    void paint(QPainter *painter) override;

Q_SIGNALS:
    void changed();

private:
    void renew();

    double m_value = 0;
    double m_seconds = 0;
    bool m_isLive = true;
};

} // namespace brindle
