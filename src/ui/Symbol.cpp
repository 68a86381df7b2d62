#include "ui/Symbol.h"

#include "ui/SymbolImages.h"

#include <QQuickWindow>
#include <QSGImageNode>

#include <cmath>

namespace brindle {

Symbol::Symbol(QQuickItem *parent) : QQuickItem(parent)
{
    setFlag(ItemHasContents);
    setImplicitSize(SymbolImages::extent(m_size), SymbolImages::extent(m_size));
}

void Symbol::setName(const QString &name)
{
    if (name == m_name)
        return;
    m_name = name;
    redraw();
}

void Symbol::setSymbolSize(double size)
{
    if (size == m_size)
        return;
    m_size = size;
    setImplicitSize(SymbolImages::extent(size), SymbolImages::extent(size));
    redraw();
}

void Symbol::setColour(const QColor &colour)
{
    if (colour == m_colour)
        return;
    m_colour = colour;
    redraw();
}

void Symbol::setGlow(const QColor &glow)
{
    if (glow == m_glow)
        return;
    m_glow = glow;
    redraw();
}

void Symbol::setGlowRadius(double radius)
{
    if (radius == m_glowRadius)
        return;
    m_glowRadius = radius;
    redraw();
}

void Symbol::redraw()
{
    m_isTextureStale = true;
    update();
    Q_EMIT changed();
}

void Symbol::itemChange(ItemChange change, const ItemChangeData &value)
{
    if (change == ItemDevicePixelRatioHasChanged || change == ItemSceneChange) {
        m_isTextureStale = true;
        update();
    }
    QQuickItem::itemChange(change, value);
}

void Symbol::geometryChange(const QRectF &geometry, const QRectF &old)
{
    QQuickItem::geometryChange(geometry, old);
    update();
}

QSGNode *Symbol::updatePaintNode(QSGNode *old, UpdatePaintNodeData *)
{
    auto *node = static_cast<QSGImageNode *>(old);
    if (m_isTextureStale || !node) {
        const double scale = window()->effectiveDevicePixelRatio();
        const QImage plain = SymbolImages::image(m_name, m_size, scale, m_colour);
        const QImage image = glows() ? SymbolImages::withGlow(plain, m_glow, m_glowRadius) : plain;
        if (image.isNull()) {
            delete node;
            return nullptr;
        }
        if (!node) {
            node = window()->createImageNode();
            node->setOwnsTexture(true);
        }
        node->setTexture(window()->createTextureFromImage(image, QQuickWindow::TextureHasAlphaChannel));
        m_isTextureStale = false;
    }
    const double extent =
        SymbolImages::extent(m_size) + (glows() ? 2 * SymbolImages::glowMargin(m_glowRadius) : 0);
    node->setFiltering(QSGTexture::Linear);
    // Whole points, so that no edge falls between two pixels.
    node->setRect(
        QRectF(std::round((width() - extent) / 2), std::round((height() - extent) / 2), extent, extent));
    return node;
}

} // namespace brindle
