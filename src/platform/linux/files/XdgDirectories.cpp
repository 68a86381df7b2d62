#include "platform/linux/files/XdgDirectories.h"

#include <QDir>

namespace brindle {

XdgDirectories::XdgDirectories(const QProcessEnvironment &environment)
{
    m_home = environment.value(QStringLiteral("HOME"), QDir::homePath());
    const auto folder = [&](const QString &variable, const QString &usual) {
        const QString path = environment.value(variable);
        // A relative path means nothing here and counts as unset.
        return QDir::cleanPath(QDir::isAbsolutePath(path) ? path : m_home + usual);
    };
    m_data = folder(QStringLiteral("XDG_DATA_HOME"), QStringLiteral("/.local/share"));
    m_cache = folder(QStringLiteral("XDG_CACHE_HOME"), QStringLiteral("/.cache"));
    m_config = folder(QStringLiteral("XDG_CONFIG_HOME"), QStringLiteral("/.config"));
    const auto folders = [&](const QString &variable, const QStringList &usual) {
        QStringList paths;
        for (const QString &path : environment.value(variable).split(u':', Qt::SkipEmptyParts)) {
            if (QDir::isAbsolutePath(path))
                paths.append(QDir::cleanPath(path));
        }
        return paths.isEmpty() ? usual : paths;
    };
    m_systemConfig = folders(QStringLiteral("XDG_CONFIG_DIRS"), {QStringLiteral("/etc/xdg")});
    m_systemData = folders(
        QStringLiteral("XDG_DATA_DIRS"), {QStringLiteral("/usr/local/share"), QStringLiteral("/usr/share")});
}

} // namespace brindle
