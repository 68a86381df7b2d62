#pragma once

#include "foundation/Scheduler.h"
#include "platform/Workspace.h"
#include "platform/linux/applications/ApplicationIcons.h"
#include "platform/linux/applications/DesktopApplication.h"

#include <QHash>
#include <QProcessEnvironment>
#include <QStringList>

#include <memory>
#include <optional>

namespace brindle {

class ApplicationCatalogue;
class XdgDirectories;

/// The applications of a Linux desktop, as their desktop entries and the processes tell of them. An
/// application lies where its entry does.
class XdgWorkspace : public Workspace
{
public:
    struct Surroundings
    {
        /// The most important first.
        QStringList dataFolders;
        QStringList configurationFolders;
        /// "de_AT.UTF-8".
        QString locale;
        /// Where the system shows its processes.
        QString processes = QStringLiteral("/proc");
    };

    XdgWorkspace(Scheduler &scheduler, Surroundings surroundings);
    ~XdgWorkspace() override;
    XdgWorkspace(const XdgWorkspace &) = delete;
    XdgWorkspace &operator=(const XdgWorkspace &) = delete;

    static Surroundings usualSurroundings(const XdgDirectories &directories,
        const QProcessEnvironment &environment = QProcessEnvironment::systemEnvironment());

    std::optional<QUrl> urlForApplication(const QString &bundleIdentifier) const override;
    std::optional<QString> localizedName(const QUrl &url) const override;
    QImage icon(const QString &path) const override;
    QSet<QString> runningApplications() const override;
    void openApplication(const QUrl &url) override;
    bool open(const QUrl &url) override;

private:
    QStringList applicationFolders() const;
    std::optional<DesktopApplication> applicationAt(const QUrl &url) const;
    QImage readIcon(const QString &path) const;

    const Surroundings m_surroundings;
    const ApplicationIcons m_icons;
    const std::unique_ptr<ApplicationCatalogue> m_catalogue;
    /// By path, until the applications change.
    mutable QHash<QString, QImage> m_knownIcons;
};

} // namespace brindle
