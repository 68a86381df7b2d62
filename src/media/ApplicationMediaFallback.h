#pragma once

#include "media/ApplicationMedia.h"
#include "media/BrowserScripts.h"

namespace brindle {

class Bundle;
class Scheduler;
class ScriptRunner;

/// Asks the applications themselves what they play, by script: the players through their dictionaries, the
/// browsers by a line of JavaScript in each tab. For the time in which nothing else tells.
///
/// Keeps nothing from one call to the next. An application that does not run is never addressed; one that
/// fails, refuses or has nothing is left out.
class ApplicationMediaFallback final : public ApplicationMedia
{
public:
    /// Made on the main thread. All three must outlive it.
    ApplicationMediaFallback(ScriptRunner &scripts, const Scheduler &scheduler, const Bundle &bundle);

    /// The players first, then the browsers in the order of their table. The order is no ranking.
    QList<NowPlayingTrack> tracks(const QSet<QString> &running) override;
    bool togglePlayback(const std::optional<QString> &bundle) override;
    bool seek(double seconds, const std::optional<QString> &bundle) override;
    /// Only the players take commands.
    bool isControllable(const std::optional<QString> &bundle) const override;

    const QList<BrowserDescriptor> &browsers() const { return m_browsers; }

private:
    std::optional<NowPlayingTrack> playerTrack(const QString &player);
    std::optional<NowPlayingTrack> browserTrack(const BrowserDescriptor &browser);
    bool command(const QString &script);

    ScriptRunner &m_scripts;
    const Scheduler &m_scheduler;
    const QList<BrowserDescriptor> m_browsers;
    const VideoHosts m_hosts;
};

} // namespace brindle
