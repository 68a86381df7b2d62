#pragma once

#include "media/NowPlayingTrack.h"

#include <optional>

namespace brindle {

struct ScriptDescriptor;

/// The music players that have a script dictionary: what they are asked, and what their answer means. Plain
/// functions; any thread.
namespace PlayerScripts {

inline const QString spotify = QStringLiteral("com.spotify.client");
inline const QString music = QStringLiteral("com.apple.Music");

/// Asks for what is on and where in it the player is. Gives nothing while the player is stopped.
QString nowPlaying(const QString &player);
/// The track in the answer to `nowPlaying`; absent when there is none, or the answer is no such thing.
std::optional<NowPlayingTrack> track(const ScriptDescriptor &answer, const QString &player, Date now);

QString togglePlayback(const QString &player);
/// A position below 0 becomes 0.
QString seek(double seconds, const QString &player);

} // namespace PlayerScripts

} // namespace brindle
