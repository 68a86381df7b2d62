#pragma once

#include "contract/audio/AudioWorld.h"
#include "foundation/SystemScheduler.h"
#include "platform/linux/audio/PulseAudioOutput.h"
#include "support/dbus/PrivateBus.h"

#include <QProcess>
#include <QProcessEnvironment>
#include <QTemporaryDir>

#include <memory>
#include <vector>

namespace brindle::test {

/// A real sound server of the test's own, with outputs that nobody hears, turned by the command that people
/// use. For as long as the object lives, programs of this process find no other.
class SoundServer : public AudioWorld
{
public:
    SoundServer();
    ~SoundServer() override;
    SoundServer(const SoundServer &) = delete;
    SoundServer &operator=(const SoundServer &) = delete;

    AudioOutput &port() override { return m_port; }
    void comeUp() override;
    void goDown() override;
    void setVolume(const QString &output, const QList<double> &channels) override;
    void setMuted(const QString &output, bool muted) override;
    void makeDefault(const QString &output) override;
    void remove(const QString &output) override;

    /// The server alone, without the two outputs; true once it answers.
    bool startServer();
    void add(const QString &output);
    /// Works the mixer: what `pactl` prints, empty when it fails.
    QString control(const QStringList &arguments) const;
    const PulseAudioOutput &output() const { return m_port; }

    QString socket() const { return folder.filePath(QStringLiteral("pulse/native")); }

    QTemporaryDir folder;

protected:
    virtual void startProcesses() = 0;
    void run(const QString &program, const QStringList &arguments = {});
    /// What a command prints; empty when it fails.
    QString ask(const QString &program, const QStringList &arguments) const;

    QProcessEnvironment m_environment = QProcessEnvironment::systemEnvironment();

private:
    SystemScheduler m_time;
    PulseAudioOutput m_port{m_time};
    std::vector<std::unique_ptr<QProcess>> m_processes;
    QMap<QString, QString> m_modules;
};

class PulseAudioServer : public SoundServer
{
protected:
    void startProcesses() override;
};

class PipeWireServer : public SoundServer
{
public:
    PipeWireServer();

protected:
    void startProcesses() override;

private:
    PrivateBus m_bus;
};

} // namespace brindle::test
