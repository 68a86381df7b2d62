#pragma once

#include "foundation/Listeners.h"
#include "foundation/Scheduler.h"
#include "foundation/SerialQueue.h"
#include "platform/AudioOutput.h"
#include "platform/ChildProcesses.h"
#include "platform/ScriptRunner.h"
#include "platform/Workspace.h"

#include <QHash>

#include <memory>
#include <vector>

namespace brindle {

/// A serial queue that runs on the test's own thread: each piece on the scheduler's next turn, unless the
/// queue is held up, as by a piece that hangs.
class FakeSerialQueue : public SerialQueue
{
public:
    explicit FakeSerialQueue(Scheduler &scheduler) : m_scheduler(scheduler) { }

    void post(std::function<void()> work) override;
    /// From now on nothing runs.
    void hold() { m_isHeld = true; }
    /// Lets everything run that was held up, and what follows.
    void release();
    qsizetype waiting() const { return qsizetype(m_waiting->size()); }

private:
    using Waiting = std::vector<std::function<void()>>;

    void scheduleTurn();
    static void runNext(Waiting &waiting);

    Scheduler &m_scheduler;
    bool m_isHeld = false;
    std::shared_ptr<Waiting> m_waiting = std::make_shared<Waiting>();
};

/// An output that a test turns up and down.
class FakeAudioOutput : public AudioOutput
{
public:
    /// Notification is refused, as by a system without it.
    bool refusesNotification = false;
    /// How often the level was read.
    mutable int readings = 0;

    std::optional<OutputLevel> level() const override
    {
        ++readings;
        return m_level;
    }
    [[nodiscard]] Subscription notify(std::function<void()> changed) override;

    /// Replaces the level and tells whoever wants to know.
    void set(std::optional<OutputLevel> level);
    bool isObserved() const { return !m_observers.isEmpty(); }

private:
    std::optional<OutputLevel> m_level;
    Listeners<> m_observers;
};

/// A desktop whose applications a test installs and starts.
class FakeWorkspace : public Workspace
{
public:
    struct Application
    {
        QUrl url;
        std::optional<QString> name;
        QImage icon;
    };

    /// By bundle identifier.
    QHash<QString, Application> installed;
    QSet<QString> running;
    QList<QUrl> opened;

    std::optional<QUrl> urlForApplication(const QString &bundleIdentifier) const override;
    std::optional<QString> localizedName(const QUrl &url) const override;
    QImage icon(const QString &path) const override;
    QSet<QString> runningApplications() const override { return running; }
    void openApplication(const QUrl &url) override { opened.append(url); }
    bool open(const QUrl &url) override;

    /// Puts an application in its place, with an icon of one colour.
    void install(const QString &bundleIdentifier, const QString &name);
};

/// Applications that answer scripts as they were told to.
class FakeScriptRunner : public ScriptRunner
{
public:
    /// By the whole source; anything else fails.
    QHash<QString, ScriptOutcome> answers;
    QStringList sources;

    ScriptOutcome run(const QString &source) override;
};

/// Programs that run because a test says so, and write what it says.
class FakeChildProcesses : public ChildProcesses
{
public:
    class Child : public ChildProcess
    {
    public:
        explicit Child(Launch launch) : m_launch(std::move(launch)) { }

        const Launch &launch() const { return m_launch; }
        bool isTerminated = false; ///< it was asked to end

        void writeOutput(const QByteArray &chunk) const;
        void writeError(const QByteArray &chunk) const;
        void exit();

        bool isRunning() const override { return m_isRunning; }
        void terminate() override { isTerminated = true; }
        void stopReading() override { m_isRead = false; }
        void waitUntilExit() override { ++waits; }

        int waits = 0;

    private:
        const Launch m_launch;
        bool m_isRunning = true;
        bool m_isRead = true;
    };

    bool refusesLaunch = false;
    /// All that were started, in order.
    std::vector<std::shared_ptr<Child>> children;

    std::shared_ptr<ChildProcess> launch(Launch launch) override;
};

} // namespace brindle
