#pragma once

#include "foundation/Scheduler.h"
#include "media/ApplicationMedia.h"
#include "media/MediaRemote.h"

#include <map>
#include <utility>

namespace brindle {

/// A remote that reports what a test says, and keeps what it was told.
class ScriptedRemote final : public MediaRemote
{
public:
    explicit ScriptedRemote(Scheduler &scheduler) : m_scheduler(scheduler) { }

    /// Whether the next start succeeds.
    bool canRun = true;
    /// "send 1", "seek 12.5"
    QStringList commands;

    void report(const std::optional<NowPlayingTrack> &track) const { m_onUpdate(track); }
    /// Its program has ended; whoever started it learns of that a little later.
    void die() { m_isRunning = false; }
    void tellOfItsEnd() const
    {
        m_onUpdate(std::nullopt);
        m_onRunningChanged(m_isRunning);
    }
    void end()
    {
        die();
        tellOfItsEnd();
    }

    bool start(UpdateHandler onUpdate, RunningHandler onRunningChanged) override
    {
        m_onUpdate = std::move(onUpdate);
        m_onRunningChanged = std::move(onRunningChanged);
        m_isRunning = canRun;
        m_scheduler.post([tell = m_onRunningChanged, running = canRun] { tell(running); });
        return m_isRunning;
    }
    void stop() override { m_isRunning = false; }
    bool isRunning() const override { return m_isRunning; }
    void send(const QStringList &arguments) override { commands.append(arguments.join(u' ')); }
    void seek(double seconds) override
    {
        commands.append(QStringLiteral("seek ") + QString::number(seconds));
    }

private:
    Scheduler &m_scheduler;
    UpdateHandler m_onUpdate;
    RunningHandler m_onRunningChanged;
    bool m_isRunning = false;
};

/// Applications that answer as a test says, and keep what they were told.
class ScriptedApplications final : public ApplicationMedia
{
public:
    /// What each application has, by bundle identifier; asked only of those that run.
    std::map<QString, NowPlayingTrack> has;
    /// "toggle com.spotify.client", "seek 12.5 com.spotify.client"
    QStringList commands;
    int polls = 0;

    QList<NowPlayingTrack> tracks(const QSet<QString> &running) override
    {
        ++polls;
        QList<NowPlayingTrack> found;
        for (const auto &[bundle, track] : has) {
            if (running.contains(bundle))
                found.append(track);
        }
        return found;
    }
    bool togglePlayback(const std::optional<QString> &bundle) override
    {
        commands.append(QStringLiteral("toggle ") + *bundle);
        return true;
    }
    bool seek(double seconds, const std::optional<QString> &bundle) override
    {
        commands.append(QStringLiteral("seek %1 %2").arg(QString::number(seconds), *bundle));
        return true;
    }
    bool isControllable(const std::optional<QString> &bundle) const override
    {
        return bundle == QStringLiteral("com.spotify.client") || bundle == QStringLiteral("com.apple.Music");
    }
};

} // namespace brindle
