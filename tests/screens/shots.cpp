// Draws the island in every state, at one and at two pixels for a point.
//
// Usage: brindle_island_shots <output folder> [state…]

#include "screens/Surroundings.h"

#include <QDir>
#include <QGuiApplication>

using namespace brindle;

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    const QStringList arguments = QGuiApplication::arguments();
    if (arguments.size() < 2)
        return 2;
    pinSurroundings();
    const QDir folder(arguments[1]);
    folder.mkpath(QStringLiteral("."));
    for (const ScreenState &state : allScreenStates()) {
        if (arguments.size() > 2 && !arguments.contains(QLatin1StringView(state.name)))
            continue;
        for (const int scale : {1, 2}) {
            if (!pictureOf(state, scale).save(folder.filePath(fileNameOf(state, scale))))
                return 1;
        }
    }
    return 0;
}
