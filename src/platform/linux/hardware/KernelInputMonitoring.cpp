#include "platform/linux/hardware/KernelInputMonitoring.h"

#include <QFileInfo>
#include <QProcess>

#include <pwd.h>
#include <unistd.h>
#include <utility>

namespace brindle {

namespace {

QString userName()
{
    const passwd *user = getpwuid(getuid());
    return user ? QString::fromLocal8Bit(user->pw_name) : QString();
}

} // namespace

KernelInputMonitoring::KernelInputMonitoring(InputNodes nodes, QString authenticator)
    : m_nodes(std::move(nodes))
    , m_authenticator(std::move(authenticator))
{ }

// The group of the nodes, if it may read them: never the administrator's own.
QString KernelInputMonitoring::readersGroup() const
{
    const QStringList paths = m_nodes.paths();
    for (const QString &path : paths) {
        const QFileInfo node(path);
        if (node.groupId() != 0 && node.permission(QFileDevice::ReadGroup))
            return node.group();
    }
    return {};
}

QStringList KernelInputMonitoring::joiningCommand() const
{
    const QString group = readersGroup();
    const QString user = userName();
    if (group.isEmpty() || user.isEmpty())
        return {};
    return {QStringLiteral("/usr/sbin/usermod"), QStringLiteral("--append"), QStringLiteral("--groups"),
        group, user};
}

// Without a dialog to show, the authenticator gives up by itself.
void KernelInputMonitoring::requestListenEventAccess()
{
    const QStringList command = joiningCommand();
    if (command.isEmpty())
        return;
    QProcess request;
    request.setProgram(m_authenticator);
    request.setArguments(QStringList{QStringLiteral("--disable-internal-agent")} + command);
    request.setStandardOutputFile(QProcess::nullDevice());
    request.setStandardErrorFile(QProcess::nullDevice());
    request.startDetached();
}

} // namespace brindle
