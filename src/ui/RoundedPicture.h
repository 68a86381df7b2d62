#pragma once

#include <QImage>
#include <QPointer>
#include <QQuickItem>
#include <QUrl>
#include <QtQml/qqmlregistration.h>

class QNetworkReply;

namespace brindle {

/// A picture that fills its frame, with rounded corners: `picture` when there is one, else the one at
/// `source`, which is loaded when needed. Shows nothing while it has none.
class RoundedPicture : public QQuickItem
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QImage picture READ picture WRITE setPicture NOTIFY changed)
    Q_PROPERTY(QUrl source READ source WRITE setSource NOTIFY changed)
    /// Points.
    Q_PROPERTY(double radius READ radius WRITE setRadius NOTIFY changed)
    Q_PROPERTY(bool hasPicture READ hasPicture NOTIFY changed)

public:
    explicit RoundedPicture(QQuickItem *parent = nullptr);
    ~RoundedPicture() override;

    QImage picture() const { return m_picture; }
    void setPicture(const QImage &picture);
    QUrl source() const { return m_source; }
    void setSource(const QUrl &source);
    double radius() const { return m_radius; }
    void setRadius(double radius);
    bool hasPicture() const { return !shown().isNull(); }

Q_SIGNALS:
    void changed();

protected:
    QSGNode *updatePaintNode(QSGNode *old, UpdatePaintNodeData *data) override;
    void itemChange(ItemChange change, const ItemChangeData &value) override;
    void geometryChange(const QRectF &geometry, const QRectF &old) override;
    void componentComplete() override;

private:
    const QImage &shown() const { return m_picture.isNull() ? m_loaded : m_picture; }
    void load();
    void redraw();
    QImage rounded(QSize pixels, double scale) const;

    QImage m_picture;
    QImage m_loaded;
    QUrl m_source;
    double m_radius = 0;
    QPointer<QNetworkReply> m_reply;
    bool m_isTextureStale = true;
};

} // namespace brindle
