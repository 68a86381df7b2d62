#include "ui/RoundedPicture.h"

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QPainter>
#include <QPainterPath>
#include <QQmlEngine>
#include <QQuickWindow>
#include <QSGImageNode>

namespace brindle {

RoundedPicture::RoundedPicture(QQuickItem *parent) : QQuickItem(parent)
{
    setFlag(ItemHasContents);
}

RoundedPicture::~RoundedPicture()
{
    if (QNetworkReply *reply = m_reply)
        reply->abort();
}

void RoundedPicture::setPicture(const QImage &picture)
{
    if (picture.cacheKey() == m_picture.cacheKey())
        return;
    m_picture = picture;
    load();
    redraw();
}

void RoundedPicture::setSource(const QUrl &source)
{
    if (source == m_source)
        return;
    m_source = source;
    m_loaded = {};
    load();
    redraw();
}

void RoundedPicture::setRadius(double radius)
{
    if (radius == m_radius)
        return;
    m_radius = radius;
    redraw();
}

void RoundedPicture::componentComplete()
{
    QQuickItem::componentComplete();
    load();
}

void RoundedPicture::load()
{
    if (QNetworkReply *reply = m_reply) {
        m_reply = nullptr;
        reply->abort();
    }
    QQmlEngine *engine = qmlEngine(this);
    if (!isComponentComplete() || !engine || !m_picture.isNull() || m_source.isEmpty())
        return;
    m_reply = engine->networkAccessManager()->get(QNetworkRequest(m_source));
    QNetworkReply *reply = m_reply;
    connect(reply, &QNetworkReply::finished, reply, &QObject::deleteLater);
    connect(reply, &QNetworkReply::finished, this, [this, reply] {
        // A reply that was given up belongs to a picture that is no longer wanted.
        if (reply != m_reply || reply->error() != QNetworkReply::NoError)
            return;
        m_loaded = QImage::fromData(reply->readAll());
        redraw();
    });
}

void RoundedPicture::redraw()
{
    m_isTextureStale = true;
    update();
    Q_EMIT changed();
}

void RoundedPicture::itemChange(ItemChange change, const ItemChangeData &value)
{
    if (change == ItemDevicePixelRatioHasChanged || change == ItemSceneChange) {
        m_isTextureStale = true;
        update();
    }
    QQuickItem::itemChange(change, value);
}

void RoundedPicture::geometryChange(const QRectF &geometry, const QRectF &old)
{
    QQuickItem::geometryChange(geometry, old);
    if (geometry.size() != old.size())
        m_isTextureStale = true;
    update();
}

QImage RoundedPicture::rounded(QSize pixels, double scale) const
{
    const QImage filled = shown().scaled(pixels, Qt::KeepAspectRatioByExpanding, Qt::SmoothTransformation);
    QImage image(pixels, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    QBrush brush(filled);
    // Whole pixels, so that nothing is blurred.
    const int left = (pixels.width() - filled.width()) / 2;
    const int top = (pixels.height() - filled.height()) / 2;
    brush.setTransform(QTransform::fromTranslate(left, top));
    QPainterPath outline;
    outline.addRoundedRect(image.rect(), m_radius * scale, m_radius * scale);
    painter.fillPath(outline, brush);
    return image;
}

QSGNode *RoundedPicture::updatePaintNode(QSGNode *old, UpdatePaintNodeData *)
{
    auto *node = static_cast<QSGImageNode *>(old);
    const double scale = window()->effectiveDevicePixelRatio();
    const QSize pixels = (size() * scale).toSize();
    if (!hasPicture() || pixels.isEmpty()) {
        delete node;
        return nullptr;
    }
    if (m_isTextureStale || !node) {
        if (!node) {
            node = window()->createImageNode();
            node->setOwnsTexture(true);
            node->setFiltering(QSGTexture::Linear);
        }
        node->setTexture(
            window()->createTextureFromImage(rounded(pixels, scale), QQuickWindow::TextureHasAlphaChannel));
        m_isTextureStale = false;
    }
    node->setRect(boundingRect());
    return node;
}

} // namespace brindle
