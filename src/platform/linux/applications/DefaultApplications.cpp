#include "platform/linux/applications/DefaultApplications.h"

#include "foundation/Files.h"
#include "platform/linux/applications/ApplicationIndex.h"
#include "platform/linux/files/KeyFile.h"

#include <QFileInfo>
#include <QMimeDatabase>

namespace brindle {

namespace {

QStringList listed(const QString &value)
{
    return value.split(u';', Qt::SkipEmptyParts);
}

/// What the user, the desktop or the system has chosen for a type.
const DesktopApplication *chosen(
    const ApplicationIndex &index, const QList<QByteArray> &choices, const QString &type)
{
    for (const QByteArray &text : choices) {
        for (const auto &group :
            {QStringLiteral("Default Applications"), QStringLiteral("Added Associations")}) {
            for (const QString &id : listed(KeyFile::group(text, group).value(type))) {
                if (const auto *const application = index.find(id))
                    return application;
            }
        }
    }
    return nullptr;
}

} // namespace

QStringList contentTypes(const QUrl &url)
{
    if (!url.isLocalFile())
        return url.scheme().isEmpty() ? QStringList()
                                      : QStringList{QStringLiteral("x-scheme-handler/") + url.scheme()};
    const QFileInfo file(url.toLocalFile());
    if (!file.exists())
        return {};
    const QMimeType type = QMimeDatabase().mimeTypeForFile(file, QMimeDatabase::MatchExtension);
    return QStringList(type.name()) + type.allAncestors();
}

const DesktopApplication *defaultApplication(
    const ApplicationIndex &index, const QStringList &folders, const QStringList &types)
{
    constexpr qsizetype limit = 0x100000;
    QList<QByteArray> choices;
    for (const QString &folder : folders)
        choices.append(
            Files::readAtMost(limit, folder + QStringLiteral("/mimeapps.list")).value_or(QByteArray()));
    for (const QString &type : types) {
        if (const auto *const application = chosen(index, choices, type))
            return application;
    }
    // Nobody chose: the one that names the closest type, and of several the first.
    const DesktopApplication *best = nullptr;
    qsizetype closest = types.size();
    for (const DesktopApplication &application : index.applications()) {
        for (const QString &type :
            listed(readDesktopEntry(application.path).value(QStringLiteral("MimeType")))) {
            const qsizetype distance = types.indexOf(type);
            if (distance >= 0 && distance < closest) {
                closest = distance;
                best = &application;
            }
        }
    }
    return best;
}

} // namespace brindle
