#include "support/dbus/DbusMock.h"

#include "support/EventLoop.h"
#include "support/dbus/PrivateBus.h"

#include <QProcessEnvironment>

#include <csignal>

namespace brindle::test {

namespace {

QStringList templateArguments(const QString &templateName, const QString &parameters)
{
    QStringList arguments{QStringLiteral("--template"), templateName};
    if (!parameters.isEmpty())
        arguments << QStringLiteral("--parameters") << parameters;
    return arguments;
}

} // namespace

DbusMock::DbusMock(
    PrivateBus &bus, const QString &name, const QString &templateName, const QString &parameters)
    : DbusMock(bus, name, templateArguments(templateName, parameters))
{ }

DbusMock::DbusMock(const Bare &bare) : DbusMock(bare.bus, bare.name, {bare.name, bare.path, bare.interface})
{ }

DbusMock::DbusMock(PrivateBus &bus, const QString &name, const QStringList &arguments)
    : m_bus(bus)
    , m_name(name)
{
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("DBUS_SYSTEM_BUS_ADDRESS"), bus.address());
    m_process.setProcessEnvironment(environment);
    m_process.setStandardOutputFile(QProcess::nullDevice());
    m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    endWithUs(m_process);
    // Debian's own interpreter has the module; another may come first on the path.
    m_process.start(QStringLiteral("/usr/bin/python3"),
        QStringList{QStringLiteral("-m"), QStringLiteral("dbusmock"), QStringLiteral("--system")}
            + arguments);
    m_isThere = bus.waitForName(name);
}

DbusMock::~DbusMock()
{
    m_process.kill();
    m_process.waitForFinished();
}

QDBusMessage DbusMock::call(
    const QString &path, const QString &interface, const QString &method, const QVariantList &arguments) const
{
    QDBusMessage message = QDBusMessage::createMethodCall(m_name, path, interface, method);
    message.setArguments(arguments);
    return m_bus.control().call(message);
}

QDBusMessage DbusMock::script(const QString &path, const QString &method, const QVariantList &arguments) const
{
    return call(path, QStringLiteral("org.freedesktop.DBus.Mock"), method, arguments);
}

void DbusMock::kill()
{
    m_process.kill();
    m_process.waitForFinished();
    m_bus.waitForNoName(m_name);
}

void DbusMock::freeze()
{
    m_isFrozen = true;
    ::kill(pid_t(m_process.processId()), SIGSTOP);
}

void DbusMock::thaw()
{
    m_isFrozen = false;
    ::kill(pid_t(m_process.processId()), SIGCONT);
}

void DbusMock::deliverAll(const QDBusConnection &connection) const
{
    if (m_isFrozen)
        PrivateBus::deliverAll(connection);
    else
        PrivateBus::deliverAll(connection, m_name);
}

void deliverInRounds(
    const QDBusConnection &connection, const DbusMock *daemon, const std::function<void()> &afterEach)
{
    deliverEvents();
    for (int round = 0; round < 3; ++round) {
        if (daemon)
            daemon->deliverAll(connection);
        else
            PrivateBus::deliverAll(connection);
        afterEach();
    }
}

} // namespace brindle::test
