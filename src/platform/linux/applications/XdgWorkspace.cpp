#include "platform/linux/applications/XdgWorkspace.h"

#include "platform/linux/applications/ApplicationCatalogue.h"
#include "platform/linux/applications/DefaultApplications.h"
#include "platform/linux/applications/RunningApplications.h"
#include "platform/linux/files/XdgDirectories.h"

#include <QDir>
#include <QFileInfo>
#include <QMimeDatabase>
#include <QProcess>
#include <QStandardPaths>

namespace brindle {

namespace {

/// Icons that are kept; far more than a day's players.
constexpr qsizetype mostIcons = 64;

/// A command that runs another in a terminal, empty where the desktop has none.
QStringList terminal()
{
    if (const QString program = QStandardPaths::findExecutable(QStringLiteral("xdg-terminal-exec"));
        !program.isEmpty())
        return {program};
    const QString program = QStandardPaths::findExecutable(QStringLiteral("x-terminal-emulator"));
    return program.isEmpty() ? QStringList() : QStringList{program, QStringLiteral("-e")};
}

/// Starts it as a program of its own, that neither ends with this one nor writes to where this one does.
bool launch(const DesktopApplication &application, const std::optional<QUrl> &url = std::nullopt)
{
    auto command = commandOf(application, url);
    const QStringList around = application.wantsTerminal ? terminal() : QStringList();
    if (!command || (application.wantsTerminal && around.isEmpty()))
        return false;
    command = around + *command;
    QProcess process;
    process.setProgram(command->takeFirst());
    process.setArguments(*command);
    process.setStandardInputFile(QProcess::nullDevice());
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    process.setWorkingDirectory(
        QFileInfo(application.workingFolder).isDir() ? application.workingFolder : QDir::homePath());
    return process.startDetached();
}

} // namespace

XdgWorkspace::XdgWorkspace(Scheduler &scheduler, Surroundings surroundings)
    : m_surroundings(std::move(surroundings))
    , m_icons(m_surroundings.dataFolders)
    , m_catalogue(std::make_unique<ApplicationCatalogue>(
          scheduler, applicationFolders(), entryLanguages(m_surroundings.locale)))
{
    QObject::connect(m_catalogue.get(), &ApplicationCatalogue::changed, m_catalogue.get(),
        [this] { m_knownIcons.clear(); });
}

XdgWorkspace::~XdgWorkspace() = default;

XdgWorkspace::Surroundings XdgWorkspace::usualSurroundings(
    const XdgDirectories &directories, const QProcessEnvironment &environment)
{
    Surroundings surroundings;
    surroundings.dataFolders = QStringList(directories.applicationSupport()) + directories.systemData();
    surroundings.configurationFolders =
        QStringList(directories.configuration()) + directories.systemConfiguration();
    for (const auto &variable :
        {QStringLiteral("LC_ALL"), QStringLiteral("LC_MESSAGES"), QStringLiteral("LANG")}) {
        if (surroundings.locale.isEmpty())
            surroundings.locale = environment.value(variable);
    }
    return surroundings;
}

QStringList XdgWorkspace::applicationFolders() const
{
    QStringList folders;
    for (const QString &folder : m_surroundings.dataFolders)
        folders.append(folder + QStringLiteral("/applications"));
    return folders;
}

std::optional<QUrl> XdgWorkspace::urlForApplication(const QString &bundleIdentifier) const
{
    const auto index = m_catalogue->index();
    const auto *const application = index->find(bundleIdentifier);
    return application ? std::optional(QUrl::fromLocalFile(application->path)) : std::nullopt;
}

std::optional<DesktopApplication> XdgWorkspace::applicationAt(const QUrl &url) const
{
    const QString path = url.toLocalFile();
    const auto index = m_catalogue->index();
    if (const auto *const application = index->atPath(path))
        return *application;
    if (!path.endsWith(u".desktop"))
        return std::nullopt;
    return readApplication(path, QFileInfo(path).completeBaseName(), entryLanguages(m_surroundings.locale));
}

std::optional<QString> XdgWorkspace::localizedName(const QUrl &url) const
{
    const auto application = applicationAt(url);
    const QFileInfo file(url.toLocalFile());
    const QString name = application ? application->name : file.exists() ? file.fileName() : QString();
    return name.isEmpty() ? std::nullopt : std::optional(name);
}

QImage XdgWorkspace::icon(const QString &path) const
{
    const auto known = m_knownIcons.constFind(path);
    if (known != m_knownIcons.constEnd())
        return *known;
    QImage image = readIcon(path);
    if (image.isNull())
        image = ApplicationIcons::plain();
    if (m_knownIcons.size() >= mostIcons)
        m_knownIcons.clear();
    m_knownIcons.insert(path, image);
    return image;
}

QImage XdgWorkspace::readIcon(const QString &path) const
{
    if (const auto application = applicationAt(QUrl::fromLocalFile(path)))
        return m_icons.find(application->icon);
    if (!QFileInfo::exists(path))
        return {};
    const QMimeType type = QMimeDatabase().mimeTypeForFile(path, QMimeDatabase::MatchExtension);
    const QImage special = m_icons.find(type.iconName());
    return special.isNull() ? m_icons.find(type.genericIconName()) : special;
}

QSet<QString> XdgWorkspace::runningApplications() const
{
    return brindle::runningApplications(*m_catalogue->index(), m_surroundings.processes);
}

void XdgWorkspace::openApplication(const QUrl &url)
{
    if (const auto application = applicationAt(url))
        launch(*application);
}

bool XdgWorkspace::open(const QUrl &url)
{
    const auto index = m_catalogue->index();
    const auto *const application = defaultApplication(
        *index, m_surroundings.configurationFolders + applicationFolders(), contentTypes(url));
    return application && launch(*application, url);
}

} // namespace brindle
