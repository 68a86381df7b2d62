#include "contract/audio/SoundServer.h"

#include <QDir>

namespace brindle::test {

using namespace Qt::StringLiterals;

namespace {

/// Whether `step` succeeds within a thousand times; each runs a command, and so takes its time.
template <typename Step> bool controlled(Step step)
{
    for (int tries = 0; tries < 1000; ++tries) {
        if (step())
            return true;
    }
    return false;
}

} // namespace

SoundServer::SoundServer()
{
    QDir(folder.path()).mkdir(u"pulse"_s);
    const QString address = u"unix:"_s + socket();
    m_environment.insert(u"XDG_RUNTIME_DIR"_s, folder.path());
    m_environment.insert(u"HOME"_s, folder.path());
    m_environment.insert(u"PULSE_SERVER"_s, address);
    m_environment.remove(u"DISPLAY"_s);
    m_environment.remove(u"DBUS_SESSION_BUS_ADDRESS"_s);
    qputenv("PULSE_SERVER", address.toUtf8());
    // The client keeps its cookie there.
    qputenv("HOME", folder.path().toUtf8());
}

SoundServer::~SoundServer()
{
    goDown();
}

void SoundServer::run(const QString &program, const QStringList &arguments)
{
    QProcess &process = *m_processes.emplace_back(std::make_unique<QProcess>());
    process.setProcessEnvironment(m_environment);
    // They complain of the hardware and the permissions that a test machine lacks.
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    endWithUs(process);
    process.start(program, arguments);
}

QString SoundServer::control(const QStringList &arguments) const
{
    return ask(u"pactl"_s, arguments);
}

QString SoundServer::ask(const QString &program, const QStringList &arguments) const
{
    QProcess process;
    process.setProcessEnvironment(m_environment);
    process.setStandardErrorFile(QProcess::nullDevice());
    process.start(program, arguments);
    process.waitForFinished();
    return process.exitCode() == 0 ? QString::fromUtf8(process.readAllStandardOutput()).trimmed() : QString();
}

bool SoundServer::startServer()
{
    startProcesses();
    return controlled([this] { return !control({u"info"_s}).isEmpty(); });
}

void SoundServer::comeUp()
{
    startServer();
    add(u"front"_s);
    add(u"back"_s);
    makeDefault(u"front"_s);
}

void SoundServer::add(const QString &output)
{
    m_modules[output] = control({u"load-module"_s, u"module-null-sink"_s, u"sink_name="_s + output});
    setVolume(output, {50});
}

void SoundServer::goDown()
{
    for (const auto &process : m_processes) {
        process->kill();
        process->waitForFinished();
    }
    m_processes.clear();
    QFile::remove(socket());
}

void SoundServer::setVolume(const QString &output, const QList<double> &channels)
{
    QStringList arguments{u"set-sink-volume"_s, output};
    for (const double channel : channels)
        arguments << QString::number(channel) + u'%';
    control(arguments);
}

void SoundServer::setMuted(const QString &output, bool muted)
{
    control({u"set-sink-mute"_s, output, muted ? u"1"_s : u"0"_s});
}

// The server may be up before the process that decides on the default.
void SoundServer::makeDefault(const QString &output)
{
    controlled([this, &output] {
        control({u"set-default-sink"_s, output});
        return control({u"get-default-sink"_s}) == output;
    });
}

void SoundServer::remove(const QString &output)
{
    control({u"unload-module"_s, m_modules.take(output)});
}

void PulseAudioServer::startProcesses()
{
    run(u"pulseaudio"_s,
        {u"-n"_s, u"--daemonize=no"_s, u"--exit-idle-time=-1"_s, u"--use-pid-file=no"_s,
            u"--disable-shm=yes"_s, u"-L"_s,
            u"module-native-protocol-unix auth-anonymous=1 socket="_s + socket()});
}

PipeWireServer::PipeWireServer()
{
    m_environment.insert(u"DBUS_SESSION_BUS_ADDRESS"_s, m_bus.address());
}

void PipeWireServer::startProcesses()
{
    run(u"pipewire"_s);
    // The other two give up where they find nothing to connect to.
    controlled([this] { return !ask(u"pw-cli"_s, {u"info"_s, u"0"_s}).isEmpty(); });
    run(u"wireplumber"_s);
    run(u"pipewire-pulse"_s);
}

} // namespace brindle::test
