#include "ui/SliderTrack.h"

#include "ui/Theme.h"

#include <QPainter>

#include <algorithm>

namespace brindle {

SliderTrack::SliderTrack(QQuickItem *parent) : QQuickPaintedItem(parent)
{
    setAntialiasing(true);
}

void SliderTrack::setFraction(double fraction)
{
    set(m_fraction, std::clamp(fraction, 0.0, 1.0));
}

void SliderTrack::setThumbRadius(double radius)
{
    set(m_thumbRadius, radius);
}

void SliderTrack::setInset(double inset)
{
    set(m_inset, inset);
}

void SliderTrack::set(double &field, double value)
{
    if (value == field)
        return;
    field = value;
    update();
    Q_EMIT changed();
}

void SliderTrack::paint(QPainter *painter)
{
    const QRectF line(0, (height() - thickness) / 2, width(), thickness);
    const QPointF thumb(m_inset + m_fraction * std::max(0.0, width() - 2 * m_inset), height() / 2);
    QRectF done = line;
    done.setRight(thumb.x());

    painter->setPen(Qt::NoPen);
    painter->setBrush(Theme::white(0.16));
    painter->drawRoundedRect(line, thickness / 2, thickness / 2);
    painter->setBrush(QColor(Qt::white));
    if (m_fraction > 0)
        painter->drawRoundedRect(done, thickness / 2, thickness / 2);
    if (m_thumbRadius > 0)
        painter->drawEllipse(thumb, m_thumbRadius, m_thumbRadius);
}

} // namespace brindle
