#pragma once

#include <QImage>
#include <QList>
#include <QPointF>

class QPainter;

namespace brindle {

/// The blurred shadow of a black silhouette that is the same to the left and to the right of its middle.
///
/// Only the left flank is computed: the right one mirrors it, and between them each row is of one darkness.
/// So it is cheap enough to be made anew for each frame of an animation, and it is drawn by the processor,
/// which makes it the same under every renderer.
class SoftShadow
{
public:
    SoftShadow() = default;
    /// `halfWidths[i]` is half the width, in points, of the silhouette in its i-th row of one point's height;
    /// `sigma` is the blur's standard deviation in points; rows from `firstRow` up to `endRow` (of the
    /// silhouette) are wanted.
    SoftShadow(const QList<double> &halfWidths, double sigma, int firstRow, int endRow, double opacity);

    /// With row 0 of the silhouette at `topCentre`.
    void paint(QPainter &painter, QPointF topCentre) const;

    /// Darkness from 0 to 255 of the pixel whose corner nearest to the origin is `x` points right of the
    /// middle, in this row.
    int alphaAt(int x, int row) const;

private:
    QImage m_flank;
    /// Points from the middle to the flank's outer and inner edge.
    int m_outer = 0;
    int m_inner = 0;
    int m_firstRow = 0;
};

} // namespace brindle
