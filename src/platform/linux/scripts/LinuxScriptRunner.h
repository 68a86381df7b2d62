#pragma once

#include "foundation/Lifetime.h"
#include "platform/ScriptRunner.h"
#include "platform/linux/scripts/Deadline.h"
#include "platform/linux/scripts/ScriptShapes.h"

#include <QDBusConnection>
#include <QStringList>

#include <mutex>
#include <optional>

namespace brindle {

class BusConnection;
struct KnownApplication;
class MediaStates;
class MprisPlayers;

/// Answers the scripts that the program sends to applications, where applications have no scripts.
///
/// There is no interpreter: the few scripts are known by their text, and what each asks for is read from the
/// player's own interface on the session's bus, or from a browser's debugging port. A browser that offers
/// none is asked on the bus too, which helps where it names the page there.
class LinuxScriptRunner : public ScriptRunner
{
public:
    struct Surroundings
    {
        /// The folders within which applications keep their configuration: the user's own, and the home in
        /// which each Flatpak has one to itself.
        QString configuration;
        QString flatpaks;
        /// Where the system shows its processes.
        QString processes = QStringLiteral("/proc");
        /// Seconds that a script may take.
        double patience = 1.8;
        /// Seconds of these that one tab or player among several may take.
        double patienceWithOne = 0.25;
    };

    /// Main thread; `run` never.
    LinuxScriptRunner(BusConnection &sessionBus, const Scheduler &time, Surroundings surroundings);

    ScriptOutcome run(const QString &source) override;

private:
    ScriptOutcome execute(const script::NowPlaying &question, const Deadline &deadline) const;
    ScriptOutcome execute(const script::MediaInTabs &question, const Deadline &deadline) const;
    ScriptOutcome execute(const script::PlayPause &command, const Deadline &deadline) const;
    ScriptOutcome execute(const script::SetPosition &command, const Deadline &deadline) const;

    bool askTabs(const KnownApplication &browser, const QString &javaScript, MediaStates &states,
        const Deadline &deadline) const;
    bool askPlayers(const KnownApplication &browser, MediaStates &states, const Deadline &deadline) const;
    bool isOf(const KnownApplication &browser, std::optional<qint64> process) const;
    QStringList profiles(const KnownApplication &browser) const;
    std::optional<MprisPlayers> players(const Deadline &deadline) const;

    const Scheduler &m_time;
    const Surroundings m_surroundings;
    mutable std::mutex m_mutex;
    /// The session's bus, once there is a connection. Set on the main thread and read on the scripts'.
    std::optional<QDBusConnection> m_connection;
    Lifetime m_lifetime;
};

} // namespace brindle
