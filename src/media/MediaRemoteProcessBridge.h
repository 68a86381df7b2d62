#pragma once

#include "foundation/Lifetime.h"
#include "foundation/SerialQueue.h"
#include "media/MediaRemote.h"
#include "platform/ChildProcesses.h"

#include <memory>

namespace brindle {

class Bundle;
struct MediaPayload;
class Scheduler;
class Workspace;

/// Runs the now-playing adapter as a child process, turns the JSON lines that it writes into tracks, and
/// starts it once more for each command.
///
/// Every line that counts brings one update, in order. A child that ends by itself is not started again: the
/// owner hears of nothing playing and of the end, and `start` is free to be called anew. After `stop` nothing
/// is called. Parsing, and decoding of pictures, happens on the io queue; the main thread only makes the
/// track.
class MediaRemoteProcessBridge final : public MediaRemote
{
public:
    /// What the two queues are called.
    static QString ioQueueLabel() { return QStringLiteral("com.brindle.mediaremote.stream"); }
    static QString commandQueueLabel() { return QStringLiteral("com.brindle.mediaremote.commands"); }

    MediaRemoteProcessBridge(const Bundle &bundle, ChildProcesses &childProcesses, const Workspace &workspace,
        Scheduler &scheduler, std::unique_ptr<SerialQueue> ioQueue,
        std::unique_ptr<SerialQueue> commandQueue);
    /// Ends the child and a command that still runs; commands that wait are dropped.
    ~MediaRemoteProcessBridge() override;

    bool start(UpdateHandler onUpdate, RunningHandler onRunningChanged) override;
    void stop() override;
    bool isRunning() const override { return m_process && m_process->isRunning(); }
    void send(const QStringList &arguments) override;
    /// In seconds; below 0 counts as 0.
    void seek(double seconds) override;

private:
    class Stream;
    class CommandRunner;

    /// Where the adapter lies.
    struct Paths
    {
        QString script;
        QString framework;
    };

    std::optional<Paths> resolvePaths() const;
    static ChildProcesses::Launch adapter(const Paths &paths, const QStringList &arguments);
    void launch(const Paths &paths);
    void update(const std::shared_ptr<Stream> &stream, const MediaPayload &payload);
    void handleTermination(const std::shared_ptr<Stream> &stream);
    void finish(const std::shared_ptr<Stream> &stream);
    void announce(const std::optional<NowPlayingTrack> &track);
    void announceRunning(bool isRunning);

    const Bundle &m_bundle;
    ChildProcesses &m_childProcesses;
    const Workspace &m_workspace;
    Scheduler &m_scheduler;
    std::unique_ptr<SerialQueue> m_ioQueue;
    std::unique_ptr<SerialQueue> m_commandQueue;
    const std::shared_ptr<CommandRunner> m_commands;
    /// The streaming child, and what it has said. The stream outlives the child until its end is announced.
    std::shared_ptr<ChildProcess> m_process;
    std::shared_ptr<Stream> m_stream;
    UpdateHandler m_onUpdate;
    RunningHandler m_onRunningChanged;
    Lifetime m_lifetime;
};

} // namespace brindle
