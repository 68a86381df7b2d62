#pragma once

#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace brindle {

/// How a value travels to its target: like a spring, along an easing curve, or at once. A plain value.
class Motion
{
    Q_GADGET
    QML_VALUE_TYPE(motion)
    Q_PROPERTY(Kind kind MEMBER kind)
    Q_PROPERTY(double response MEMBER response)
    Q_PROPERTY(double dampingFraction MEMBER dampingFraction)
    Q_PROPERTY(double blend MEMBER blend)
    Q_PROPERTY(double duration MEMBER duration)

public:
    enum Kind { none, spring, easeOut, easeInOut };
    Q_ENUM(Kind)

    Kind kind = none;
    /// Of springs: seconds that one swing would take without damping; above 0.
    double response = 0;
    /// Of springs: 1 is critically damped, less overshoots.
    double dampingFraction = 1;
    /// Of springs: seconds over which a moving value goes from the spring it had to this one.
    double blend = 0;
    /// Of easing curves: seconds.
    double duration = 0;

    static constexpr Motion makeSpring(double response, double dampingFraction, double blend = 0)
    {
        return {spring, response, dampingFraction, blend, 0};
    }
    static constexpr Motion makeEaseOut(double seconds) { return {easeOut, 0, 1, 0, seconds}; }
    static constexpr Motion makeEaseInOut(double seconds) { return {easeInOut, 0, 1, 0, seconds}; }
    /// What every change of selection becomes for those who asked for less movement.
    static constexpr Motion plain() { return makeEaseInOut(0.12); }

    bool operator==(const Motion &) const = default;
};

} // namespace brindle
