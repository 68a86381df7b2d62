#pragma once

#include "platform/linux/applications/DesktopApplication.h"

#include <QHash>
#include <QList>
#include <QSet>
#include <QStringList>

namespace brindle {

struct ProcessIdentity;

/// All applications that are installed, by everything that may name them. Never changes once it is made; any
/// thread.
class ApplicationIndex
{
public:
    /// Reads the entries below these folders, of which the first has the last word. Waits for the disk.
    ApplicationIndex(const QStringList &folders, const QStringList &languages);

    /// By the name of its entry, its well-known identifier, the class of its windows, or the end of its
    /// entry's name, as players give it; in any case of letters. Null when there is none.
    const DesktopApplication *find(const QString &identifier) const;
    const DesktopApplication *atPath(const QString &path) const;
    const QList<DesktopApplication> &applications() const { return m_applications; }

    /// The identifiers of the application that a process is of: its entry's name, and its well-known one
    /// where it has one. Empty when it is of none.
    QStringList identifiersOf(const ProcessIdentity &process) const;
    /// The same by the name under which the session's manager started it.
    QStringList identifiersOfUnit(const QString &unit) const;

    /// The folders in which a change would be news.
    const QStringList &folders() const { return m_folders; }

private:
    struct Reading;

    void readFolder(Reading &reading, const QString &folder, const QString &prefix);
    void nameAll();
    void claimPrograms();
    const DesktopApplication *application(const QHash<QString, qsizetype> &names, const QString &name) const;
    static QStringList identifiersOf(const DesktopApplication *application);

    QStringList m_folders;
    QList<DesktopApplication> m_applications;
    QHash<QString, qsizetype> m_byId;
    /// By everything else, in lower case.
    QHash<QString, qsizetype> m_byName;
    QHash<QString, qsizetype> m_byPath;
    QHash<QString, qsizetype> m_byFlatpak;
    /// By the program that it starts: its real path, and its name alone.
    QHash<QString, qsizetype> m_byProgram;
    QHash<QString, qsizetype> m_byProgramName;
};

} // namespace brindle
