#pragma once

#include "adapter/linux/PlayerState.h"

#include <QVariantMap>

/// Reading a player's properties as they come from the bus. Whatever has a wrong type, or is no possible
/// value, counts as not said.
namespace brindle::adapter::PlayerProperties {

/// Takes over what `properties` speak of; the rest of `state` stays. Each property is a whole: metadata
/// replace all that was known of the track.
void merge(PlayerState &state, const QVariantMap &properties);

bool speakOfStatus(const QVariantMap &properties);
bool speakOfPosition(const QVariantMap &properties);
/// Seconds, 0 or above; absent where they do not tell.
std::optional<double> position(const QVariantMap &properties);
/// Reads such a value: whole microseconds. One below 0 counts as 0, since players count from there before the
/// first sound.
std::optional<double> position(const QVariant &value);

} // namespace brindle::adapter::PlayerProperties
