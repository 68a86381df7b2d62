#include "media/MediaRemoteProcessBridge.h"

#include "foundation/Scheduler.h"
#include "media/LineReader.h"
#include "media/MediaPayload.h"
#include "media/PayloadTrack.h"
#include "platform/Bundle.h"

#include <QFileInfo>

#include <cmath>
#include <mutex>

namespace brindle {

/// What one child has said so far. Lives on the io queue. Each child has its own, so that nothing that an
/// earlier one left behind can reach the state of the next.
class MediaRemoteProcessBridge::Stream : public std::enable_shared_from_this<Stream>
{
public:
    using PayloadHandler =
        std::function<void(const std::shared_ptr<Stream> &stream, const MediaPayload &payload)>;

    /// `handle` is called on the main thread, with each state that a line brought about.
    Stream(Scheduler &scheduler, PayloadHandler handle) : m_scheduler(scheduler), m_handle(std::move(handle))
    { }

    void consume(const QByteArray &chunk)
    {
        m_lineBuffer.consume(chunk, [this](const QByteArray &line) { handleLine(line); });
    }

private:
    void handleLine(const QByteArray &line)
    {
        if (!m_mergedPayload.apply(line))
            return;
        m_scheduler.post([handle = m_handle, stream = shared_from_this(),
                             payload = m_mergedPayload.payload()] { handle(stream, payload); });
    }

    Scheduler &m_scheduler;
    const PayloadHandler m_handle;
    LineReader m_lineBuffer;
    MergedPayload m_mergedPayload;
};

/// Runs commands for the command queue, and ends the one that runs when the bridge goes: the queue waits for
/// it, and it might hang.
class MediaRemoteProcessBridge::CommandRunner
{
public:
    explicit CommandRunner(ChildProcesses &childProcesses) : m_childProcesses(childProcesses) { }

    void run(ChildProcesses::Launch launch)
    {
        const auto child = begin(std::move(launch));
        if (!child)
            return;
        child->waitUntilExit();
        const std::scoped_lock lock(m_mutex);
        m_child = nullptr;
    }

    void end()
    {
        const std::scoped_lock lock(m_mutex);
        m_isEnding = true;
        if (m_child)
            m_child->terminate();
    }

private:
    std::shared_ptr<ChildProcess> begin(ChildProcesses::Launch launch)
    {
        const std::scoped_lock lock(m_mutex);
        if (!m_isEnding)
            m_child = m_childProcesses.launch(std::move(launch));
        return m_child;
    }

    ChildProcesses &m_childProcesses;
    std::mutex m_mutex;
    std::shared_ptr<ChildProcess> m_child;
    bool m_isEnding = false;
};

MediaRemoteProcessBridge::MediaRemoteProcessBridge(const Bundle &bundle, ChildProcesses &childProcesses,
    const Workspace &workspace, Scheduler &scheduler, std::unique_ptr<SerialQueue> ioQueue,
    std::unique_ptr<SerialQueue> commandQueue)
    : m_bundle(bundle)
    , m_childProcesses(childProcesses)
    , m_workspace(workspace)
    , m_scheduler(scheduler)
    , m_ioQueue(std::move(ioQueue))
    , m_commandQueue(std::move(commandQueue))
    , m_commands(std::make_shared<CommandRunner>(childProcesses))
{ }

MediaRemoteProcessBridge::~MediaRemoteProcessBridge()
{
    stop();
    m_commands->end();
}

bool MediaRemoteProcessBridge::start(UpdateHandler onUpdate, RunningHandler onRunningChanged)
{
    m_onUpdate = std::move(onUpdate);
    m_onRunningChanged = std::move(onRunningChanged);
    if (isRunning())
        return true;

    // Posted before the outcome is known, so that no line of the child's can overtake it.
    const auto hasStarted = std::make_shared<bool>(false);
    m_scheduler.post(m_lifetime.guard([this, hasStarted] { announceRunning(*hasStarted); }));
    if (const auto paths = resolvePaths()) {
        launch(*paths);
        *hasStarted = m_process != nullptr;
    }
    return *hasStarted;
}

void MediaRemoteProcessBridge::stop()
{
    m_onUpdate = nullptr;
    m_onRunningChanged = nullptr;
    if (m_process) {
        m_process->stopReading();
        if (m_process->isRunning())
            m_process->terminate();
    }
    m_process = nullptr;
    m_stream = nullptr;
}

void MediaRemoteProcessBridge::send(const QStringList &arguments)
{
    const auto paths = resolvePaths();
    if (!paths)
        return;
    m_commandQueue->post(
        [commands = m_commands, launch = adapter(*paths, arguments)] { commands->run(launch); });
}

void MediaRemoteProcessBridge::seek(double seconds)
{
    // Within what an integer holds; more is no position.
    constexpr double farthest = 9e18;
    const double microseconds = std::min(std::round(std::max(0.0, seconds) * 1'000'000), farthest);
    send({QStringLiteral("seek"), QString::number(qint64(microseconds))});
}

auto MediaRemoteProcessBridge::resolvePaths() const -> std::optional<Paths>
{
    const auto script = m_bundle.resourcePath(QStringLiteral("mediaremote-adapter.pl"));
    const auto frameworks = m_bundle.privateFrameworksPath();
    if (!script || !frameworks)
        return std::nullopt;
    const QString framework = *frameworks + QStringLiteral("/MediaRemoteAdapter.framework");
    return QFileInfo(framework).isDir() ? std::optional(Paths{*script, framework}) : std::nullopt;
}

ChildProcesses::Launch MediaRemoteProcessBridge::adapter(const Paths &paths, const QStringList &arguments)
{
    return {.executable = QStringLiteral("/usr/bin/perl"),
        .arguments = QStringList{paths.script, paths.framework} + arguments,
        .standardOutput = {},
        .standardError = {},
        .terminated = {}};
}

// The readers may use the queue, for they are removed before it goes. The news of the end may come later.
void MediaRemoteProcessBridge::launch(const Paths &paths)
{
    // One that has ended already, but whose end is still on its way here.
    if (m_process)
        m_process->stopReading();
    m_stream = std::make_shared<Stream>(m_scheduler,
        m_lifetime.guard([this](const std::shared_ptr<Stream> &stream, const MediaPayload &payload) {
            update(stream, payload);
        }));
    auto launch = adapter(paths, {QStringLiteral("stream"), QStringLiteral("--debounce=80")});
    launch.standardOutput = [&queue = *m_ioQueue, stream = m_stream](const QByteArray &chunk) {
        queue.post([stream, chunk] { stream->consume(chunk); });
    };
    const auto onMainThread = m_lifetime.guard([this, stream = m_stream] { handleTermination(stream); });
    launch.terminated = [&scheduler = m_scheduler, onMainThread] { scheduler.post(onMainThread); };
    m_process = m_childProcesses.launch(std::move(launch));
}

// Each handler is copied before its call, in which it might be replaced.
void MediaRemoteProcessBridge::announceRunning(bool isRunning)
{
    if (const auto onRunningChanged = m_onRunningChanged)
        onRunningChanged(isRunning);
}

void MediaRemoteProcessBridge::announce(const std::optional<NowPlayingTrack> &track)
{
    if (const auto onUpdate = m_onUpdate)
        onUpdate(track);
}

// A line that was still being read when its child's end was announced, or when it was stopped, comes too
// late.
void MediaRemoteProcessBridge::update(const std::shared_ptr<Stream> &stream, const MediaPayload &payload)
{
    if (stream == m_stream)
        announce(makeTrack(payload, m_workspace, m_scheduler.now()));
}

void MediaRemoteProcessBridge::handleTermination(const std::shared_ptr<Stream> &stream)
{
    if (!m_process || stream != m_stream)
        return;
    m_process->stopReading();
    m_process = nullptr;
    m_scheduler.post(m_lifetime.guard([this, stream] { finish(stream); }));
}

void MediaRemoteProcessBridge::finish(const std::shared_ptr<Stream> &stream)
{
    if (stream == m_stream)
        m_stream = nullptr;
    announce(std::nullopt);
    announceRunning(false);
}

} // namespace brindle
