#include "contract/workspace/XdgWorkspaceWorld.h"

#include "support/EventLoop.h"

#include <QDir>
#include <QFile>
#include <QFileSystemWatcher>

namespace brindle::test {

namespace {

using namespace Qt::StringLiterals;

/// The smallest picture there is.
const QByteArray red = "P3 1 1 255 255 0 0\n";

} // namespace

XdgWorkspaceWorld::XdgWorkspaceWorld()
{
    QDir().mkpath(folder.path(u"data/applications"_s));
    folder.write(u"bin/note"_s,
        "#!/bin/sh\nfor word; do echo \"$word\"; done > '" + folder.path(u"noting"_s).toUtf8() + "'\nmv '"
            + folder.path(u"noting"_s).toUtf8() + "' '" + folder.path(u"noted"_s).toUtf8() + "'\n");
    QFile(notingProgram()).setPermissions(QFile::ReadOwner | QFile::ExeOwner);
    startAnew();
}

XdgWorkspaceWorld::~XdgWorkspaceWorld()
{
    for (auto &[identifier, process] : m_processes) {
        process.kill();
        process.waitForFinished();
    }
}

void XdgWorkspaceWorld::startAnew()
{
    m_port = std::make_unique<XdgWorkspace>(m_time,
        XdgWorkspace::Surroundings{{folder.path(u"data"_s)}, {folder.path(u"config"_s)}, u"de_DE.UTF-8"_s});
}

QString XdgWorkspaceWorld::notingProgram() const
{
    return folder.path(u"bin/note"_s);
}

QByteArray XdgWorkspaceWorld::noted() const
{
    QFile file(folder.path(u"noted"_s));
    const QFileSystemWatcher watcher({folder.path(QString())});
    if (!eventually([&] { return file.exists(); }, 5) || !file.open(QIODevice::ReadOnly))
        return {};
    return file.readAll();
}

void XdgWorkspaceWorld::install(const QString &identifier, const QString &name)
{
    const QString icon = folder.path(u"icons/"_s + identifier + u".ppm"_s);
    folder.write(u"icons/"_s + identifier + u".ppm"_s, red);
    port().urlForApplication(identifier); // from now on it looks out for changes
    folder.writeEntry(identifier,
        "Name=" + name.toUtf8() + "\nIcon=" + icon.toUtf8() + "\nExec=" + notingProgram().toUtf8() + ' '
            + identifier.toUtf8() + "\nStartupWMClass=" + identifier.toUtf8() + "\n");
    eventually([&] { return port().urlForApplication(identifier).has_value(); });
}

void XdgWorkspaceWorld::start(const QString &identifier)
{
    // A program by the name of the application, which waits until it is ended.
    const QString program = folder.path(u"programs/"_s + identifier);
    QDir().mkpath(folder.path(u"programs"_s));
    QFile::copy(u"/bin/cat"_s, program);
    folder.writeEntry(identifier, "Name=x\nExec=" + program.toUtf8() + "\n");
    m_processes[identifier].start(program, {});
    m_processes[identifier].waitForStarted();
    eventually([&] { return port().runningApplications().contains(identifier); });
}

void XdgWorkspaceWorld::end(const QString &identifier)
{
    m_processes[identifier].kill();
    m_processes[identifier].waitForFinished();
}

bool XdgWorkspaceWorld::wasOpened(const QUrl &url)
{
    return noted() == QFileInfo(url.toLocalFile()).completeBaseName().toUtf8() + '\n';
}

} // namespace brindle::test
