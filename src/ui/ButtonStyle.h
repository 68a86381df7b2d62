#pragma once

#include "ui/Motion.h"

#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace brindle {

/// How a button answers the pointer: how large it is, how bright its ground is, and how it gets there. A
/// plain value.
class ButtonStyle
{
    Q_GADGET
    QML_VALUE_TYPE(buttonStyle)
    Q_PROPERTY(brindle::Motion motion MEMBER motion)
    Q_PROPERTY(brindle::Motion fillMotion MEMBER fillMotion)

public:
    double pressedScale = 1;
    double hoveredScale = 1;
    /// Opacities of the white ground.
    double restingFill = 0;
    double hoveredFill = 0;
    /// Of the scale.
    Motion motion;
    Motion fillMotion;

    Q_INVOKABLE double scale(bool isPressed, bool isHovered) const
    {
        return isPressed ? pressedScale : isHovered ? hoveredScale : 1;
    }
    Q_INVOKABLE double fill(bool isPressed, bool isHovered) const
    {
        return isPressed || isHovered ? hoveredFill : restingFill;
    }

    bool operator==(const ButtonStyle &) const = default;
};

} // namespace brindle
