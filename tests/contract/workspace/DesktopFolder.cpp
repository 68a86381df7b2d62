#include "contract/workspace/DesktopFolder.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

namespace brindle::test {

void DesktopFolder::write(const QString &name, const QByteArray &contents) const
{
    QDir().mkpath(QFileInfo(path(name)).path());
    QSaveFile file(path(name));
    if (file.open(QIODevice::WriteOnly) && file.write(contents) == contents.size())
        file.commit();
}

void DesktopFolder::writeEntry(const QString &name, const QByteArray &lines) const
{
    write(QStringLiteral("data/applications/") + name + QStringLiteral(".desktop"),
        "[Desktop Entry]\nType=Application\n" + lines);
}

void DesktopFolder::remove(const QString &name) const
{
    QFile::remove(path(name));
}

} // namespace brindle::test
