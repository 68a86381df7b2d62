#include "platform/linux/applications/ProcessIdentity.h"

#include "foundation/Files.h"
#include "platform/linux/files/KeyFile.h"

#include <QFile>

#include <array>
#include <climits>
#include <unistd.h>

namespace brindle {

namespace {

/// Where a link leads, in words: what is there need not exist for us.
QString target(const QString &link)
{
    std::array<char, PATH_MAX> path{};
    const auto size = ::readlink(QFile::encodeName(link).constData(), path.data(), path.size());
    return size < 0 ? QString() : QFile::decodeName(QByteArray(path.data(), size));
}

/// Only what runs from an application's own folder, or carries its messages, is looked into: most processes
/// are in no sandbox.
bool mayBeSandboxed(const QString &executable)
{
    return executable.startsWith(u"/app/") || executable.endsWith(u"/xdg-dbus-proxy");
}

QString flatpakOf(const QString &folder)
{
    constexpr qsizetype limit = 0x10000;
    const auto info = Files::readAtMost(limit, folder + QStringLiteral("/root/.flatpak-info"));
    const auto group = KeyFile::group(info.value_or(QByteArray()), QStringLiteral("Application"));
    return group.value(QStringLiteral("name"));
}

} // namespace

std::optional<ProcessIdentity> identityOfProcess(const QString &folder)
{
    QString executable = target(folder + QStringLiteral("/exe"));
    if (executable.isEmpty())
        return std::nullopt;
    // A program that was replaced while it runs is still the same program.
    const QString replaced = QStringLiteral(" (deleted)");
    if (executable.endsWith(replaced))
        executable.chop(replaced.size());
    QString flatpak = mayBeSandboxed(executable) ? flatpakOf(folder) : QString();
    return ProcessIdentity{std::move(executable), std::move(flatpak)};
}

} // namespace brindle
