#include "platform/linux/ScreenCoordinates.h"

#include <QGuiApplication>
#include <QScreen>

namespace brindle::ScreenCoordinates {

namespace {

/// The line about which y is mirrored.
double primaryBottom()
{
    const QScreen *primary = QGuiApplication::primaryScreen();
    return primary ? primary->geometry().y() + primary->geometry().height() : 0;
}

} // namespace

QRectF fromWindowSystem(const QRectF &rect)
{
    return {rect.x(), primaryBottom() - rect.y() - rect.height(), rect.width(), rect.height()};
}

QPointF fromWindowSystem(const QPointF &point)
{
    return {point.x(), primaryBottom() - point.y()};
}

// Mirroring is its own inverse.
QRectF toWindowSystem(const QRectF &rect)
{
    return fromWindowSystem(rect);
}

} // namespace brindle::ScreenCoordinates
