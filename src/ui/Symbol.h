#pragma once

#include <QColor>
#include <QQuickItem>
#include <QtQml/qqmlregistration.h>

namespace brindle {

/// Draws one of the program's symbols in one colour. Its implicit size is a square that suits type of `size`
/// points; a name that is unknown draws nothing.
class Symbol : public QQuickItem
{
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString name READ name WRITE setName NOTIFY changed)
    Q_PROPERTY(double size READ size WRITE setSymbolSize NOTIFY changed)
    Q_PROPERTY(QColor colour READ colour WRITE setColour NOTIFY changed)
    /// A soft light around it; none while this is transparent.
    Q_PROPERTY(QColor glow READ glow WRITE setGlow NOTIFY changed)
    /// Of that light's blur, in points.
    Q_PROPERTY(double glowRadius READ glowRadius WRITE setGlowRadius NOTIFY changed)

public:
    explicit Symbol(QQuickItem *parent = nullptr);

    QString name() const { return m_name; }
    void setName(const QString &name);
    double size() const { return m_size; }
    void setSymbolSize(double size);
    QColor colour() const { return m_colour; }
    void setColour(const QColor &colour);
    QColor glow() const { return m_glow; }
    void setGlow(const QColor &glow);
    double glowRadius() const { return m_glowRadius; }
    void setGlowRadius(double radius);

Q_SIGNALS:
    void changed();

protected:
    QSGNode *updatePaintNode(QSGNode *old, UpdatePaintNodeData *data) override;
    void itemChange(ItemChange change, const ItemChangeData &value) override;
    void geometryChange(const QRectF &geometry, const QRectF &old) override;

private:
    void redraw();
    bool glows() const { return m_glow.alpha() > 0 && m_glowRadius > 0; }

    QString m_name;
    double m_size = 12;
    QColor m_colour = Qt::white;
    QColor m_glow = Qt::transparent;
    double m_glowRadius = 0;
    bool m_isTextureStale = true;
};

} // namespace brindle
