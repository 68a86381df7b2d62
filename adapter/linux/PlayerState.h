#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace brindle::adapter {

enum class PlaybackStatus { playing, paused, stopped };

/// What is in a player. Texts are empty, and numbers absent, where the player said nothing usable.
struct Track
{
    /// What the player calls the track: a D-Bus object path, or empty.
    QString id;
    QByteArray url;
    QString title;
    QString artist;
    QString album;
    /// Seconds, above 0.
    std::optional<double> duration;
    /// Where its picture is to be had, as the player wrote it.
    QByteArray artworkAddress;

    bool operator==(const Track &) const = default;

    /// Whether both are one and the same piece; what else is known of it may differ.
    bool isSamePiece(const Track &other) const
    {
        return id == other.id && url == other.url && title == other.title;
    }
};

/// All that matters here of a player's properties, but for the position.
struct PlayerState
{
    PlaybackStatus status = PlaybackStatus::stopped;
    /// The speed while it plays, above 0.
    double rate = 1;
    bool canPlay = true;
    bool canPause = true;
    Track track;

    bool operator==(const PlayerState &) const = default;

    bool isPlaying() const { return status == PlaybackStatus::playing; }
    /// Seconds of the track in a second of time, at present.
    double speed() const { return isPlaying() ? rate : 0; }
};

} // namespace brindle::adapter
