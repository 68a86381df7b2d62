#include "contract/adapter/AdapterStream.h"

#include "support/EventLoop.h"
#include "support/dbus/PrivateBus.h"

#include <QDateTime>
#include <QJsonDocument>
#include <QProcessEnvironment>

#include <csignal>
#include <fcntl.h>
#include <sys/prctl.h>
#include <unistd.h>
#include <utility>

namespace brindle::test {

namespace {

using namespace Qt::StringLiterals;

const QString perl = u"/usr/bin/perl"_s;

QProcessEnvironment onBus(const PrivateBus &bus)
{
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"DBUS_SESSION_BUS_ADDRESS"_s, bus.address());
    return environment;
}

bool hasEnded(const QProcess &process)
{
    return process.state() == QProcess::NotRunning;
}

} // namespace

QStringList adapterArguments(const QStringList &command)
{
    return QStringList{QStringLiteral(ADAPTER_SCRIPT), QStringLiteral(ADAPTER_FRAMEWORK)} + command;
}

AdapterStream::AdapterStream(const PrivateBus &bus, const QStringList &options)
{
    if (::pipe2(m_pipe.data(), O_CLOEXEC | O_NONBLOCK) != 0)
        return;
    m_process.setProcessEnvironment(onBus(bus));
    m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_process.setChildProcessModifier([output = m_pipe[1]] {
        ::prctl(PR_SET_PDEATHSIG, SIGKILL);
        ::dup2(output, STDOUT_FILENO);
    });
    m_process.start(perl, adapterArguments(QStringList{u"stream"_s} + options));
    m_process.waitForStarted();
    ::close(std::exchange(m_pipe[1], -1));
    m_readable.emplace(m_pipe[0], QSocketNotifier::Read);
    QObject::connect(&*m_readable, &QSocketNotifier::activated, &*m_readable, [this] { read(); });
}

AdapterStream::~AdapterStream()
{
    closeReader();
    m_process.kill();
    m_process.waitForFinished();
}

void AdapterStream::read()
{
    std::array<char, 65536> chunk{};
    const ssize_t count = ::read(m_pipe[0], chunk.data(), chunk.size());
    if (count == 0)
        m_readable->setEnabled(false);
    if (count <= 0)
        return;
    m_reader.consume({chunk.data(), count}, [this](const QByteArray &line) {
        lines.push_back(QJsonDocument::fromJson(line).object());
        m_merged.apply(line);
    });
}

double AdapterStream::timestamp() const
{
    const auto moment = QDateTime::fromString(text(u"timestamp"_s), Qt::ISODateWithMs);
    return double(moment.toMSecsSinceEpoch()) / 1000;
}

bool AdapterStream::waitFor(const std::function<bool()> &holds) const
{
    return eventually(holds);
}

bool AdapterStream::waitForTitle(const QString &title) const
{
    return waitFor([this, &title] { return this->title() == title; });
}

bool AdapterStream::waitForFirstLine() const
{
    return waitFor([this] { return !lines.empty(); });
}

void AdapterStream::stopReading()
{
    m_readable->setEnabled(false);
}

void AdapterStream::readOn()
{
    m_readable->setEnabled(true);
}

void AdapterStream::closeReader()
{
    m_readable.reset();
    if (m_pipe[0] >= 0)
        ::close(std::exchange(m_pipe[0], -1));
}

std::optional<int> AdapterStream::exitCode()
{
    if (!eventually([this] { return hasEnded(m_process); }) || m_process.exitStatus() != QProcess::NormalExit)
        return std::nullopt;
    return m_process.exitCode();
}

std::optional<int> runAdapter(const PrivateBus &bus, const QStringList &command)
{
    QProcess process;
    process.setProcessEnvironment(onBus(bus));
    process.start(perl, adapterArguments(command));
    if (!eventually([&process] { return hasEnded(process); }) || process.exitStatus() != QProcess::NormalExit)
        return std::nullopt;
    return process.exitCode();
}

} // namespace brindle::test
