#pragma once

#include <QObject>

namespace brindle {

/// How a change of selection is to be shown. A plain value that QML reads.
class SelectionAnimation
{
    Q_GADGET
    Q_PROPERTY(Kind kind MEMBER kind)
    Q_PROPERTY(double response MEMBER response)
    Q_PROPERTY(double dampingFraction MEMBER dampingFraction)
    Q_PROPERTY(double blendDuration MEMBER blendDuration)
    Q_PROPERTY(double duration MEMBER duration)

public:
    enum Kind { none, spring, easeInOut };
    Q_ENUM(Kind)

    Kind kind = none;
    /// Seconds; of springs.
    double response = 0;
    double dampingFraction = 1;
    double blendDuration = 0;
    /// Seconds; of the others.
    double duration = 0;

    static constexpr SelectionAnimation makeSpring(
        double response, double dampingFraction, double blendDuration)
    {
        return {spring, response, dampingFraction, blendDuration, 0};
    }
    static constexpr SelectionAnimation makeEaseInOut(double duration)
    {
        return {easeInOut, 0, 1, 0, duration};
    }
    /// What every animation becomes for those who asked for less movement.
    static constexpr SelectionAnimation plain() { return makeEaseInOut(0.12); }

    bool operator==(const SelectionAnimation &) const = default;
};

} // namespace brindle
