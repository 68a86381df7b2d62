#pragma once

#include <QString>

#include <optional>
#include <variant>

namespace brindle {

/// What the scripts that are understood ask for. `application` is a bundle identifier.
namespace script {

/// A player: what is on, and where in it the player is.
struct NowPlaying
{
    QString application;
    bool withArtwork = false;

    bool operator==(const NowPlaying &) const = default;
};

/// A browser: what this JavaScript gives in its tabs, the first text that starts with "1", else the first
/// that is not empty.
struct MediaInTabs
{
    QString application;
    QString javaScript;

    bool operator==(const MediaInTabs &) const = default;
};

struct PlayPause
{
    QString application;

    bool operator==(const PlayPause &) const = default;
};

struct SetPosition
{
    QString application;
    double seconds = 0;

    bool operator==(const SetPosition &) const = default;
};

} // namespace script

using Script = std::variant<script::NowPlaying, script::MediaInTabs, script::PlayPause, script::SetPosition>;

/// Recognises a script by its whole text: there is no interpreter behind this, so a text that differs in a
/// single character is none.
std::optional<Script> recogniseScript(const QString &source);

} // namespace brindle
