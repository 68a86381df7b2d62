// Draws the island in every state, at one and at two pixels for a point.
//
// Usage: brindle_island_shots <output folder> [state…]

#include "screens/Surroundings.h"

#include <QDir>

using namespace brindle;

int main(int argc, char **argv)
{
    const auto application = pinnedApplication(argc, argv);
    if (argc < 2)
        return 2;
    const QDir folder(QString::fromLocal8Bit(argv[1]));
    folder.mkpath(QStringLiteral("."));
    const QStringList wanted = application->arguments().mid(2);
    for (const ScreenState &state : allScreenStates()) {
        const QString name = QString::fromLatin1(state.name);
        for (const int scale : {1, 2}) {
            if (!wanted.isEmpty() && !wanted.contains(name))
                continue;
            const QString path = folder.filePath(QStringLiteral("%1@%2x.png").arg(name).arg(scale));
            if (!pictureOf(state, scale).save(path))
                return 1;
        }
    }
    return 0;
}
