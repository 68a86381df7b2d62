#include "adapter/linux/CommandLine.h"
#include "adapter/linux/CommandRun.h"
#include "adapter/linux/CommandService.h"
#include "adapter/linux/NowPlayingStream.h"
#include "foundation/SystemScheduler.h"

#include <QCoreApplication>
#include <QFileInfo>

#include <csignal>
#include <cstdio>
#include <unistd.h>

namespace brindle::adapter {

namespace {

using namespace Qt::StringLiterals;

enum ExitCode { done = 0, failed = 1, misused = 2 };

constexpr auto usage = "usage: mediaremote-adapter.pl FRAMEWORK stream [--debounce=MILLISECONDS]\n"
                       "       mediaremote-adapter.pl FRAMEWORK send 0|1|4|5\n"
                       "       mediaremote-adapter.pl FRAMEWORK seek MICROSECONDS\n";

/// Disconnected where the session has no bus. Without an address the library would start one, which nobody
/// else would be on.
QDBusConnection sessionBus()
{
    const QString name = u"session"_s;
    const QString usual = qEnvironmentVariable("XDG_RUNTIME_DIR") + u"/bus"_s;
    if (qEnvironmentVariableIsEmpty("DBUS_SESSION_BUS_ADDRESS") && !QFileInfo::exists(usual))
        return QDBusConnection(name);
    return QDBusConnection::connectToBus(QDBusConnection::SessionBus, name);
}

int stream(const QDBusConnection &bus, const StreamRequest &request)
{
    // A reader that goes away is an ordinary end, told by the write that fails.
    std::signal(SIGPIPE, SIG_IGN);
    SystemScheduler scheduler;
    std::optional<NowPlayingStream> stream;
    // First, so that whoever has read a line finds the stream by its name.
    const CommandService commands(bus, [&stream] { return stream ? stream->shown() : nullptr; });
    stream.emplace(bus, scheduler,
        NowPlayingStream::Settings{
            request.debounce, QCoreApplication::applicationDirPath() + u"/fetch-artwork"_s, STDOUT_FILENO});
    QObject::connect(
        &*stream, &NowPlayingStream::readerGone, qApp, [] { QCoreApplication::exit(done); },
        Qt::QueuedConnection);
    QObject::connect(
        &*stream, &NowPlayingStream::busGone, qApp, [] { QCoreApplication::exit(failed); },
        Qt::QueuedConnection);
    return QCoreApplication::exec();
}

int run(const QDBusConnection &bus, const CommandRequest &request)
{
    if (const auto isThrough = runThroughStream(bus, request))
        return *isThrough ? done : failed;
    SystemScheduler scheduler;
    CommandRun run(bus, scheduler, request);
    QObject::connect(
        &run, &CommandRun::ended, qApp,
        [](bool isThrough) { QCoreApplication::exit(isThrough ? done : failed); }, Qt::QueuedConnection);
    return QCoreApplication::exec();
}

int start(int argc, char **argv)
{
    // The other event loop there is takes longer to start and does not tell of a broken socket.
    qputenv("QT_NO_GLIB", "1");
    const QCoreApplication application(argc, argv);
    const auto request = parseCommandLine(QCoreApplication::arguments().mid(1));
    if (!request) {
        std::fputs(usage, stderr);
        return misused;
    }
    const QDBusConnection bus = sessionBus();
    if (!bus.isConnected())
        return failed;
    if (const auto *streaming = std::get_if<StreamRequest>(&*request))
        return stream(bus, *streaming);
    if (const auto *send = std::get_if<SendRequest>(&*request))
        return run(bus, *send);
    return run(bus, std::get<SeekRequest>(*request));
}

} // namespace

} // namespace brindle::adapter

int main(int argc, char **argv)
{
    return brindle::adapter::start(argc, argv);
}
