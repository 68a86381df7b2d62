#pragma once

#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace brindle {

/// How content looks while it comes into the island or leaves it. Applied in this order: opacity, blur, scale
/// about the top centre, vertical offset. A plain value.
class IslandContentAppearance
{
    Q_GADGET
    QML_ANONYMOUS
    Q_PROPERTY(double opacity MEMBER opacity)
    Q_PROPERTY(double blurRadius MEMBER blurRadius)
    Q_PROPERTY(double scale MEMBER scale)
    Q_PROPERTY(double verticalOffset MEMBER verticalOffset)

public:
    double opacity = 1;
    /// Points, as are offsets.
    double blurRadius = 0;
    double scale = 1;
    double verticalOffset = 0;

    /// Out of sight: what content comes from and goes to.
    static constexpr IslandContentAppearance active(bool reducesEffects)
    {
        return {0, reducesEffects ? 0.0 : 7.0, 0.97, -7};
    }
    static constexpr IslandContentAppearance identity() { return {}; }
    /// 0 is `from`, 1 is `to`; a spring may go beyond, opacity and blur do not.
    static IslandContentAppearance between(
        const IslandContentAppearance &from, const IslandContentAppearance &to, double progress);

    bool operator==(const IslandContentAppearance &) const = default;
};

} // namespace brindle
