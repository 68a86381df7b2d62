#include "platform/linux/files/LinuxBundle.h"

#include "foundation/Files.h"
#include "foundation/Json.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

namespace brindle {

namespace {

QString besideProgram(const QString &folder)
{
    return QDir::cleanPath(QCoreApplication::applicationDirPath() + QStringLiteral("/../") + folder);
}

} // namespace

LinuxBundle::LinuxBundle(const QStringList &folders, const QString &frameworks) : m_folders(folders)
{
    if (QFileInfo(frameworks).isDir())
        m_frameworks = frameworks;
    const auto path = LinuxBundle::resourcePath(QStringLiteral("Info.json"));
    const auto text = path ? Files::read(*path) : std::nullopt;
    const auto info = text ? Json::decodeObject(*text) : std::nullopt;
    m_info = info.value_or(QJsonObject()).toVariantMap();
}

std::optional<QString> LinuxBundle::resourcePath(const QString &name) const
{
    const QString clean = QDir::cleanPath(name);
    if (name.isEmpty() || QDir::isAbsolutePath(clean) || clean == u".." || clean.startsWith(u"../"))
        return std::nullopt;
    for (const QString &folder : m_folders) {
        QString path = folder + u'/' + clean;
        if (QFileInfo(path).isFile())
            return path;
    }
    return std::nullopt;
}

QStringList LinuxBundle::usualFolders()
{
    return {QStringLiteral(":/brindle"), besideProgram(QStringLiteral("share/velmora"))};
}

QString LinuxBundle::usualFrameworks()
{
    return besideProgram(QStringLiteral("libexec/velmora"));
}

} // namespace brindle
