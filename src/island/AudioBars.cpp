#include "island/AudioBars.h"

#include "island/AudioWaveform.h"

#include <QPainter>

#include <cmath>

namespace brindle {

AudioBars::AudioBars(QQuickItem *parent) : QQuickPaintedItem(parent)
{
    setAntialiasing(true);
}

double AudioBars::interval()
{
    return AudioWaveform::interval;
}

void AudioBars::setSeconds(double seconds)
{
    if (seconds == m_seconds)
        return;
    m_seconds = seconds;
    update();
    Q_EMIT changed();
}

void AudioBars::setVolume(double volume)
{
    if (volume == m_volume)
        return;
    m_volume = volume;
    update();
    Q_EMIT changed();
}

void AudioBars::paint(QPainter *painter)
{
    using namespace AudioWaveform;
    painter->setPen(Qt::NoPen);
    painter->setBrush(Qt::white);
    const double all = barCount * barWidth + (barCount - 1) * spacing;
    // Whole device pixels to the left, so that all bars look alike.
    const double pixel = 1 / painter->deviceTransform().m11();
    double x = (width() - all) / 2;
    for (int index = 0; index < barCount; ++index) {
        const double tall = barHeight(index, m_seconds, m_volume);
        painter->drawRoundedRect(QRectF(std::round(x / pixel) * pixel, (height() - tall) / 2, barWidth, tall),
            barWidth / 2, barWidth / 2);
        x += barWidth + spacing;
    }
}

} // namespace brindle
