#pragma once

#include <QColor>
#include <QFont>
#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace brindle {

/// The shared look: colours and type. Sizes are points of the interface, one logical pixel each. Main thread.
class Theme : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(QColor primary READ primary CONSTANT)
    Q_PROPERTY(QColor secondary READ secondary CONSTANT)
    Q_PROPERTY(QColor charging READ charging CONSTANT)
    Q_PROPERTY(QColor helpGround READ helpGround CONSTANT)

public:
    using QObject::QObject;

    static QColor primary() { return QColor(Qt::white); }
    /// For what stands behind the first: details, what is not selected.
    static QColor secondary() { return white(0.58); }
    static QColor charging() { return QColor::fromRgbF(0.7F, 0.96F, 0.77F); }
    /// Behind words that lie over other content.
    static QColor helpGround() { return QColor::fromRgbF(0.16F, 0.16F, 0.17F); }

    /// White at an opacity from 0 to 1.
    Q_INVOKABLE static QColor white(double opacity);
    /// The desktop's interface font; `weight` is one of `QFont::Weight`.
    Q_INVOKABLE static QFont font(double size, int weight = QFont::Normal);
};

} // namespace brindle
