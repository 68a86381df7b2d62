#pragma once

#include <QColor>
#include <QImage>
#include <QString>

namespace brindle {

/// The program's symbols as pictures. Main thread.
class SymbolImages
{
public:
    /// The side of the square, in points, that a symbol takes beside type of this size.
    static int extent(double size);

    /// The symbol in one colour, at `extent(size)` points and with that many device pixels for each; null
    /// when there is no symbol of this name. What was drawn lately is kept.
    static QImage image(const QString &name, double size, double devicePixelRatio, const QColor &colour);

    /// The same picture over a soft light of its own outline, `glowMargin(radius)` points larger on each
    /// side.
    static QImage withGlow(const QImage &image, const QColor &glow, double radius);
    static int glowMargin(double radius);
};

} // namespace brindle
