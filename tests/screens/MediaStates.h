#pragma once

#include "screens/States.h"

namespace brindle {

QImage coverPicture();
/// A third into a song of 3:42, with all that a track can tell.
NowPlayingTrack songOf(const IslandScene &scene, bool isPlaying, bool hasArtwork = true);

/// The media tab.
QList<ScreenState> mediaStates();

} // namespace brindle
