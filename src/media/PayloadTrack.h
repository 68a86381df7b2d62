#pragma once

#include "media/MediaPayload.h"
#include "media/NowPlayingTrack.h"
#include "platform/Workspace.h"

#include <optional>

namespace brindle {

/// The track that a payload tells of, absent when it has no title. `now` stands in for a missing timestamp.
/// A field of a wrong type counts as missing. Main thread, as `workspace` is.
std::optional<NowPlayingTrack> makeTrack(const MediaPayload &payload, const Workspace &workspace, Date now);

} // namespace brindle
