#pragma once

#include "media/NowPlayingTrack.h"

#include <QList>
#include <QSet>
#include <QString>

#include <optional>

namespace brindle {

/// The feed that asks the applications themselves. Its calls block and are made on one serial queue, never on
/// the main thread; `isControllable` may be asked anywhere.
class ApplicationMedia
{
public:
    virtual ~ApplicationMedia() = default;

    /// One track for each of the `running` applications (bundle identifiers) that has something.
    virtual QList<NowPlayingTrack> tracks(const QSet<QString> &running) = 0;
    /// False when the application takes no commands or the command failed.
    virtual bool togglePlayback(const std::optional<QString> &bundle) = 0;
    virtual bool seek(double seconds, const std::optional<QString> &bundle) = 0;
    virtual bool isControllable(const std::optional<QString> &bundle) const = 0;
};

} // namespace brindle
