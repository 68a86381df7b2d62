#pragma once

#include "adapter/linux/PlaybackPosition.h"
#include "adapter/linux/PlayerState.h"

#include <QByteArray>
#include <QJsonObject>

#include <optional>

namespace brindle::adapter {

/// What the stream has to tell at one moment. A plain value; the picture is shared by its copies.
struct Payload
{
    struct Position
    {
        PlaybackPosition::Anchor anchor;
        /// Of the same player: worth telling only when it differs from the one told last.
        int course;
    };

    /// Which player this is of; 0 for none. A player that quits and starts again is another one.
    quint64 player = 0;
    /// All keys but those below, in the words of the wire.
    QJsonObject fields;
    std::optional<Position> position;
    /// A picture in Base64; empty for none.
    QByteArray artwork;
};

struct PayloadSource
{
    quint64 player;
    QString bundleIdentifier;
    const PlayerState &state;
    const PlaybackPosition &position;
    QByteArray artwork;
};

Payload makePayload(const PayloadSource &source);

/// "2026-11-21T08:15:30.250Z"
QString timestampText(Date date);

} // namespace brindle::adapter
