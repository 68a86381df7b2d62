#include "adapter/linux/ArtworkFetch.h"

#include "adapter/linux/Artwork.h"

#include <csignal>
#include <sys/prctl.h>
#include <utility>

namespace brindle::adapter {

namespace {

constexpr qsizetype longestText = (Artwork::largest + 2) / 3 * 4;

} // namespace

ArtworkFetch::ArtworkFetch(Scheduler &scheduler, const QString &program, const QByteArray &address,
    std::function<void(QByteArray)> done)
    : m_done(std::move(done))
    , m_deadline(scheduler.after(patience, [this] { end({}); }))
{
    m_process.setStandardErrorFile(QProcess::nullDevice());
    m_process.setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGKILL); });
    connect(&m_process, &QProcess::readyReadStandardOutput, this, [this] { take(); });
    connect(&m_process, &QProcess::finished, this, [this](int code, QProcess::ExitStatus status) {
        take();
        end(status == QProcess::NormalExit && code == 0 ? m_text : QByteArray());
    });
    // From within start() it would come too early.
    connect(
        &m_process, &QProcess::errorOccurred, this,
        [this](QProcess::ProcessError error) {
            if (error == QProcess::FailedToStart)
                end({});
        },
        Qt::QueuedConnection);
    m_process.start(program, QStringList());
    // Not on its command line, which everybody may read.
    m_process.write(address);
    m_process.closeWriteChannel();
}

ArtworkFetch::~ArtworkFetch()
{
    m_process.disconnect(this);
    m_process.kill();
    m_process.waitForFinished();
}

void ArtworkFetch::take()
{
    m_text += m_process.readAllStandardOutput();
    if (m_text.size() > longestText)
        end({});
}

void ArtworkFetch::end(const QByteArray &result)
{
    if (const auto done = std::exchange(m_done, nullptr))
        done(result);
}

} // namespace brindle::adapter
