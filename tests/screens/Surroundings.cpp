#include "screens/Surroundings.h"

#include <QFont>
#include <QLocale>
#include <QQuickWindow>

namespace brindle {

std::unique_ptr<QGuiApplication> pinnedApplication(int &argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("TZ", "UTC");
    qputenv("QT_FONT_DPI", "96");
    qunsetenv("QT_SCALE_FACTOR");
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    auto application = std::make_unique<QGuiApplication>(argc, argv);
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
    QFont font(QStringLiteral("Inter"));
    font.setHintingPreference(QFont::PreferNoHinting);
    QGuiApplication::setFont(font);
    return application;
}

QImage pictureOf(const ScreenState &state, double scale)
{
    IslandScene scene(scale);
    state.stage(scene);
    return scene.picture();
}

} // namespace brindle
