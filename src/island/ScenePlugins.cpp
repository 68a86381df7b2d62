// The modules are part of the program; this brings them to the QML engine's notice.

#include <QtPlugin>

Q_IMPORT_PLUGIN(Brindle_UiPlugin)
Q_IMPORT_PLUGIN(Brindle_MediaPlugin)
Q_IMPORT_PLUGIN(Brindle_IslandPlugin)
