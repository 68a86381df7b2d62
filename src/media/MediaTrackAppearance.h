#pragma once

#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace brindle {

/// How a song looks while it comes or goes. Applied in this order: opacity, blur, scale, horizontal offset. A
/// plain value.
class MediaTrackAppearance
{
    Q_GADGET
    QML_ANONYMOUS
    Q_PROPERTY(double opacity MEMBER opacity)
    Q_PROPERTY(double blurRadius MEMBER blurRadius)
    Q_PROPERTY(double scale MEMBER scale)
    Q_PROPERTY(double xOffset MEMBER xOffset)

public:
    double opacity = 1;
    /// Points, as are offsets.
    double blurRadius = 0;
    double scale = 1;
    double xOffset = 0;

    /// Out of sight: what a song comes from and goes to. With reduced effects it only fades.
    static constexpr MediaTrackAppearance active(bool reducesEffects)
    {
        return reducesEffects ? MediaTrackAppearance{0, 0, 1, 0} : MediaTrackAppearance{0, 9, 0.975, 12};
    }
    static constexpr MediaTrackAppearance identity() { return {}; }
    /// 0 is `from`, 1 is `to`; a spring may go beyond, opacity and blur do not.
    static MediaTrackAppearance between(
        const MediaTrackAppearance &from, const MediaTrackAppearance &to, double progress);

    bool operator==(const MediaTrackAppearance &) const = default;
};

} // namespace brindle
