#include "support/dbus/PrivateBus.h"

#include "support/EventLoop.h"

#include <QDBusConnectionInterface>
#include <QDBusServiceWatcher>
#include <QFile>

#include <csignal>
#include <sys/prctl.h>

namespace brindle::test {

namespace {

/// The type says only which standard address it would have; nothing is activated, everything is allowed.
constexpr auto configuration =
    R"(<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <type>system</type>
  <keep_umask/>
  <listen>unix:dir=%1</listen>
  <policy context="default">
    <allow send_destination="*" eavesdrop="true"/>
    <allow eavesdrop="true"/>
    <allow own="*"/>
  </policy>
</busconfig>
)";

} // namespace

void endWithUs(QProcess &process)
{
    process.setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGKILL); });
}

PrivateBus::PrivateBus() : m_control(QString{})
{
    const QString file = m_folder.filePath(QStringLiteral("bus.conf"));
    QFile conf(file);
    if (conf.open(QIODevice::WriteOnly))
        conf.write(QString::fromLatin1(configuration).arg(m_folder.path()).toUtf8());
    conf.close();

    endWithUs(m_daemon);
    // It complains of limits that a container does not let it raise.
    m_daemon.setStandardErrorFile(QProcess::nullDevice());
    m_daemon.start(QStringLiteral("dbus-daemon"),
        {QStringLiteral("--config-file=") + file, QStringLiteral("--nofork"), QStringLiteral("--nopidfile"),
            QStringLiteral("--print-address=1")});
    while (!m_daemon.canReadLine() && m_daemon.waitForReadyRead()) { }
    m_address = QString::fromUtf8(m_daemon.readLine()).trimmed();
    m_control = QDBusConnection::connectToBus(m_address, QStringLiteral("control ") + m_address);
}

PrivateBus::~PrivateBus()
{
    end();
    QDBusConnection::disconnectFromBus(m_control.name());
}

void PrivateBus::end()
{
    m_daemon.kill();
    m_daemon.waitForFinished();
}

bool PrivateBus::hasOwner(const QString &name) const
{
    return m_control.interface()->isServiceRegistered(name);
}

bool PrivateBus::waitForName(const QString &name) const
{
    const QDBusServiceWatcher watcher(name, m_control);
    return eventually([&] { return hasOwner(name); });
}

bool PrivateBus::waitForNoName(const QString &name) const
{
    const QDBusServiceWatcher watcher(name, m_control);
    return eventually([&] { return !hasOwner(name); });
}

void PrivateBus::deliverAll(const QDBusConnection &connection, const QString &service)
{
    // Everyone answers in order: what was sent before has arrived when this answer has.
    connection.call(QDBusMessage::createMethodCall(service, QStringLiteral("/org/freedesktop/DBus"),
        QStringLiteral("org.freedesktop.DBus.Peer"), QStringLiteral("Ping")));
    deliverEvents();
}

} // namespace brindle::test
