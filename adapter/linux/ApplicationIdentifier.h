#pragma once

#include <QString>

#include <functional>

namespace brindle::adapter {

/// What the bus tells of the application behind a player. Texts are empty where it tells nothing.
struct PlayerOrigin
{
    /// The name that the player owns, below "org.mpris.MediaPlayer2.".
    QString nameBelow;
    /// The property "DesktopEntry".
    QString desktopEntry;
    /// The path of the program that owns the name.
    QString executable;
};

/// The desktop entry id that the player itself names; empty where it names none, or what cannot be one.
QString namedDesktopEntry(const QString &desktopEntry);

/// The desktop entry id of the application, the best guess that there is: what the player names, else the
/// name of its program if an application of that name is installed, else what its bus name says. Spotify,
/// whose entry has several names, is "com.spotify.client".
QString applicationIdentifier(
    const PlayerOrigin &origin, const std::function<bool(const QString &id)> &isInstalled);

} // namespace brindle::adapter
