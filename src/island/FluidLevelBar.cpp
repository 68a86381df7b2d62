#include "island/FluidLevelBar.h"

#include "island/FluidSystemLevel.h"
#include "ui/Theme.h"

#include <QPainter>
#include <QPainterPath>

#include <cmath>

namespace brindle {
namespace {

void fillCapsule(QPainter &painter, const QRectF &rect, const QColor &colour)
{
    const double radius = rect.height() / 2;
    QPainterPath path;
    path.addRoundedRect(rect, radius, radius);
    painter.fillPath(path, colour);
}

// A few faint capsules, each a little larger, fall off nearly as a blur of radius 2.5 does.
void paintGlow(QPainter &painter, const QRectF &rect)
{
    constexpr int rings = 5;
    constexpr double reach = 4.5;
    for (int ring = rings; ring > 0; --ring) {
        const double out = reach * ring / rings;
        fillCapsule(painter, rect.adjusted(-out, -out, out, out), Theme::white(0.25 / (rings + 1) * 0.75));
    }
}

} // namespace

FluidLevelBar::FluidLevelBar(QQuickItem *parent) : QQuickPaintedItem(parent)
{
    setAntialiasing(true);
}

double FluidLevelBar::interval()
{
    return FluidSystemLevel::interval;
}

void FluidLevelBar::setValue(double value)
{
    if (value == m_value)
        return;
    m_value = value;
    renew();
}

void FluidLevelBar::setSeconds(double seconds)
{
    if (seconds == m_seconds)
        return;
    m_seconds = seconds;
    renew();
}

void FluidLevelBar::setLive(bool live)
{
    if (live == m_isLive)
        return;
    m_isLive = live;
    renew();
}

void FluidLevelBar::renew()
{
    update();
    Q_EMIT changed();
}

void FluidLevelBar::paint(QPainter *painter)
{
    const QSizeF frame(width() - 2 * margin(), height() - 2 * margin());
    const auto level = FluidSystemLevel::geometry(frame, m_value, m_seconds, m_isLive);
    // The track's edges fall on device pixels, else both would be blurred.
    const double pixel = 1 / painter->deviceTransform().m22();
    const double up = level.track.top() - std::floor(level.track.top() / pixel) * pixel;
    painter->translate(margin(), margin() - up);
    fillCapsule(*painter, level.track, Theme::white(0.16));
    if (level.fill.isEmpty())
        return;
    paintGlow(*painter, level.fill);
    fillCapsule(*painter, level.fill, Qt::white);
    fillCapsule(*painter, level.head, Qt::white);
    fillCapsule(*painter, level.trail, Theme::white(0.5));
}

} // namespace brindle
