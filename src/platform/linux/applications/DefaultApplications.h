#pragma once

#include "platform/linux/applications/DesktopApplication.h"

#include <QStringList>
#include <QUrl>

namespace brindle {

class ApplicationIndex;

/// The content types that say what may open `url`, the closest first. Empty when there is nothing at it.
QStringList contentTypes(const QUrl &url);

/// The application that the user, the desktop or the system has chosen for one of these types, else any that
/// can open it; null when there is none. `folders` hold the choices, the most important first. Reads small
/// files.
const DesktopApplication *defaultApplication(
    const ApplicationIndex &index, const QStringList &folders, const QStringList &types);

} // namespace brindle
