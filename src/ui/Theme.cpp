#include "ui/Theme.h"

#include <QGuiApplication>
#include <QScreen>

namespace brindle {

QColor Theme::white(double opacity)
{
    return QColor::fromRgbF(1, 1, 1, float(opacity));
}

QFont Theme::font(double size, int weight)
{
    QFont font = QGuiApplication::font();
    // Pixel sizes are whole numbers in QFont; point sizes are not, and count in the screen's declared
    // resolution.
    const QScreen *screen = QGuiApplication::primaryScreen();
    const double dotsPerInch = screen ? screen->logicalDotsPerInch() : 96;
    font.setPointSizeF(size * 72 / dotsPerInch);
    font.setWeight(QFont::Weight(weight));
    return font;
}

} // namespace brindle
