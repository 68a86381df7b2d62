// What the adapter's bridge takes in, from a real child that writes as fast as it can, beside the least that
// anyone could do with the same bytes: read them from the pipe and parse each line, on one thread.

#include "foundation/SystemScheduler.h"
#include "foundation/ThreadQueue.h"
#include "media/LineReader.h"
#include "media/MediaRemoteProcessBridge.h"
#include "platform/fake/FakeDesktop.h"
#include "platform/fake/FakeMedia.h"
#include "platform/linux/process/LinuxChildProcesses.h"

#include <QBuffer>
#include <QCoreApplication>
#include <QDir>
#include <QEventLoop>
#include <QFile>
#include <QImage>
#include <QJsonDocument>
#include <QRandomGenerator>
#include <QTemporaryDir>

#include <algorithm>
#include <chrono>
#include <cstdio>

namespace {

using namespace brindle;
using Clock = std::chrono::steady_clock;

double secondsSince(Clock::time_point start)
{
    return std::chrono::duration<double>(Clock::now() - start).count();
}

/// Knows the longest time that the main thread was busy with one thing.
class Application : public QCoreApplication
{
public:
    using QCoreApplication::QCoreApplication;

    double longestTurn = 0;

    bool notify(QObject *receiver, QEvent *event) override
    {
        const auto start = Clock::now();
        const bool isHandled = QCoreApplication::notify(receiver, event);
        longestTurn = std::max(longestTurn, secondsSince(start));
        return isHandled;
    }
};

struct Load
{
    const char *name;
    QByteArray bytes;
    qsizetype lines;
};

Load smallDiffs()
{
    constexpr qsizetype count = 200'000;
    QByteArray bytes = "{\"payload\": {\"title\": \"Song\", \"artist\": \"Someone\"}}\n";
    for (qsizetype i = 1; i < count; ++i) {
        bytes += "{\"diff\": true, \"payload\": {\"elapsedTime\": " + QByteArray::number(double(i) / 8)
            + ", \"timestamp\": \"2025-11-21T08:15:30.250Z\", \"playing\": true}}\n";
    }
    return {"small diffs", bytes, count};
}

/// Noise, which no format makes smaller, and a few bytes behind it that tell one picture from the next.
Load largeArtwork(bool isAlwaysTheSame)
{
    constexpr qsizetype count = 10;
    QImage noise(2240, 2240, QImage::Format_RGB888);
    QRandomGenerator random(1);
    for (int y = 0; y < noise.height(); ++y)
        std::generate_n(noise.scanLine(y), noise.bytesPerLine(), [&random] { return uchar(random()); });
    QByteArray picture;
    QBuffer buffer(&picture);
    noise.save(&buffer, "PNG");
    QByteArray bytes;
    for (qsizetype i = 0; i < count; ++i) {
        const QByteArray file = picture + QByteArray(3, isAlwaysTheSame ? 'x' : char('a' + i));
        bytes += "{\"payload\": {\"title\": \"Song\", \"artworkData\": \"" + file.toBase64() + "\"}}\n";
    }
    return {isAlwaysTheSame ? "20 MB artwork, the same" : "20 MB artwork, each another", bytes, count};
}

/// A folder with a script in the adapter's place, which writes out a file that lies beside it.
class Adapter
{
public:
    Adapter()
    {
        QDir(m_folder.path()).mkdir(QStringLiteral("MediaRemoteAdapter.framework"));
        // As a stream it stays when it has written all: its end would drop the lines that are still to be
        // read.
        write(script,
            "open(F, '<', \"$ARGV[0]/../lines\"); print $b while read(F, $b, 1 << 20);"
            "if ($ARGV[1]) { $| = 1; print ''; select(undef, undef, undef, undef) }");
        m_bundle.resources.insert(QStringLiteral("mediaremote-adapter.pl"), script);
        m_bundle.frameworks = m_folder.path();
    }

    void load(const QByteArray &bytes) const { write(m_folder.filePath(QStringLiteral("lines")), bytes); }
    const Bundle &bundle() const { return m_bundle; }
    QByteArray commandLine() const
    {
        return QFile::encodeName(
            QStringLiteral("/usr/bin/perl %1 %2/MediaRemoteAdapter.framework").arg(script, m_folder.path()));
    }

private:
    static void write(const QString &path, const QByteArray &bytes)
    {
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
            qFatal("no room for the lines");
    }

    QTemporaryDir m_folder;
    const QString script = m_folder.filePath(QStringLiteral("adapter.pl"));
    FakeBundle m_bundle;
};

double runBridge(const Adapter &adapter, qsizetype lines)
{
    SystemScheduler time;
    FakeWorkspace workspace;
    LinuxChildProcesses processes;
    MediaRemoteProcessBridge bridge(adapter.bundle(), processes, workspace, time,
        std::make_unique<ThreadQueue>(MediaRemoteProcessBridge::ioQueueLabel()),
        std::make_unique<ThreadQueue>(MediaRemoteProcessBridge::commandQueueLabel()));
    QEventLoop loop;
    qsizetype updates = 0;
    const auto start = Clock::now();
    double seconds = 0;
    bridge.start(
        [&](const std::optional<NowPlayingTrack> &track) {
            updates += track ? 1 : 0;
            if (updates < lines)
                return;
            seconds = secondsSince(start);
            loop.quit();
        },
        [](bool) {});

    loop.exec();
    return seconds;
}

double runBaseline(const Adapter &adapter)
{
    const auto start = Clock::now();
    FILE *pipe = popen(adapter.commandLine().constData(), "r"); // NOLINT(cert-env33-c)
    LineReader reader;
    QByteArray chunk(65'536, Qt::Uninitialized);
    qsizetype objects = 0;
    while (const std::size_t count = std::fread(chunk.data(), 1, std::size_t(chunk.size()), pipe)) {
        reader.consume(QByteArrayView(chunk).first(qsizetype(count)), [&objects](const QByteArray &line) {
            objects += QJsonDocument::fromJson(line).isObject() ? 1 : 0;
        });
    }
    pclose(pipe);
    return objects > 0 ? secondsSince(start) : 0;
}

} // namespace

int main(int argc, char **argv)
{
    Application application(argc, argv);
    const Adapter adapter;
    std::printf("%-28s %12s %12s %16s %8s %22s\n", "", "lines/s", "MB/s", "baseline MB/s", "ratio",
        "longest main turn");
    for (const Load &load : {smallDiffs(), largeArtwork(true), largeArtwork(false)}) {
        adapter.load(load.bytes);
        application.longestTurn = 0;
        const double seconds = runBridge(adapter, load.lines);
        const double stall = application.longestTurn;
        const double baseline = runBaseline(adapter);
        const double megabytes = double(load.bytes.size()) / 1e6;
        std::printf("%-28s %12.0f %12.1f %16.1f %8.2f %19.2f ms\n", load.name, double(load.lines) / seconds,
            megabytes / seconds, megabytes / baseline, seconds / baseline, 1000 * stall);
    }
    return 0;
}
