#include "screens/Surroundings.h"

#include <QFont>
#include <QGuiApplication>
#include <QLocale>
#include <QQuickWindow>

#include <ctime>

namespace brindle {

void pinSurroundings()
{
    qputenv("TZ", "UTC");
    tzset();
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
    QFont font;
    // The others for the scripts that the first does not write.
    font.setFamilies(
        {QStringLiteral("Inter"), QStringLiteral("DejaVu Sans"), QStringLiteral("Droid Sans Fallback")});
    font.setHintingPreference(QFont::PreferNoHinting);
    QGuiApplication::setFont(font);
}

QImage pictureOf(const ScreenState &state, double scale)
{
    IslandScene scene(scale);
    state.stage(scene);
    const QImage whole = scene.picture();
    const QRectF seen = state.area.isNull() ? QRectF(QPointF(), IslandSurface::panelSize) : state.area;
    return whole.copy(QRectF(seen.topLeft() * scale, seen.size() * scale).toRect());
}

QString fileNameOf(const ScreenState &state, int scale)
{
    return QStringLiteral("%1@%2x.png").arg(QLatin1StringView(state.name)).arg(scale);
}

} // namespace brindle
