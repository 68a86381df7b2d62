#include "platform/linux/files/XdgDirectories.h"

#include <QDir>

namespace brindle {

XdgDirectories::XdgDirectories(const QProcessEnvironment &environment)
{
    const QString home = environment.value(QStringLiteral("HOME"), QDir::homePath());
    const auto folder = [&](const QString &variable, const QString &usual) {
        const QString path = environment.value(variable);
        // A relative path means nothing here and counts as unset.
        return QDir::cleanPath(QDir::isAbsolutePath(path) ? path : home + usual);
    };
    m_data = folder(QStringLiteral("XDG_DATA_HOME"), QStringLiteral("/.local/share"));
    m_cache = folder(QStringLiteral("XDG_CACHE_HOME"), QStringLiteral("/.cache"));
    m_config = folder(QStringLiteral("XDG_CONFIG_HOME"), QStringLiteral("/.config"));
    const auto list = environment.value(QStringLiteral("XDG_CONFIG_DIRS")).split(u':', Qt::SkipEmptyParts);
    for (const QString &path : list) {
        if (QDir::isAbsolutePath(path))
            m_systemConfig.append(QDir::cleanPath(path));
    }
    if (m_systemConfig.isEmpty())
        m_systemConfig.append(QStringLiteral("/etc/xdg"));
}

} // namespace brindle
