#pragma once

#include <QQuickPaintedItem>
#include <QtQml/qqmlregistration.h>

namespace brindle {

/// The bars of `AudioWaveform`, painted for one moment. One small picture, so that a new moment repaints
/// nothing else.
class AudioBars : public QQuickPaintedItem
{
    Q_OBJECT
    QML_ELEMENT
    /// Seconds since the start of 2001, UTC.
    Q_PROPERTY(double seconds READ seconds WRITE setSeconds NOTIFY changed)
    /// 0 to 1.
    Q_PROPERTY(double volume READ volume WRITE setVolume NOTIFY changed)
    Q_PROPERTY(double interval READ interval CONSTANT)

public:
    explicit AudioBars(QQuickItem *parent = nullptr);

    double seconds() const { return m_seconds; }
    void setSeconds(double seconds);
    double volume() const { return m_volume; }
    void setVolume(double volume);
    static double interval();

    void paint(QPainter *painter) override;

Q_SIGNALS:
    void changed();

private:
    double m_seconds = 0;
    double m_volume = 0;
};

} // namespace brindle
