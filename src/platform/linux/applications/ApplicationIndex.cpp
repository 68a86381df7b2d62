#include "platform/linux/applications/ApplicationIndex.h"

#include "platform/linux/applications/KnownApplications.h"
#include "platform/linux/applications/ProcessIdentity.h"

#include <QDir>
#include <QDirIterator>
#include <QFileInfo>
#include <QRegularExpression>
#include <QStandardPaths>

#include <algorithm>

namespace brindle {

namespace {

// No desktop comes near these; what lies there beyond them is a mistake or malice.
constexpr int deepestFolder = 6;
constexpr qsizetype mostEntries = 10'000;

const QString suffix = QStringLiteral(".desktop");

/// The ends of an entry's name by which players and packagings call it: "org.videolan.VLC", "vlc_vlc".
QStringList endsOf(const DesktopApplication &application)
{
    return {application.id.section(u'.', -1), application.id.section(u'_', -1),
        QFileInfo(application.path).completeBaseName()};
}

/// The first claim to a name holds.
void insertFirst(QHash<QString, qsizetype> &names, const QString &name, qsizetype place)
{
    if (!names.contains(name))
        names.insert(name, place);
}

/// Programs that run others: that one runs says nothing of which application it is.
bool isLauncher(const QString &program)
{
    static const QRegularExpression names(QRegularExpression::anchoredPattern(QStringLiteral(
        "(?:env|flatpak|snap|(?:ba|da|z|k|c|fi)?sh|pkexec|sudo|gtk-launch|gjs(?:-console)?|java|mono|"
        "node|busctl|gdbus|xdg-open|gio|(?:python|perl|ruby|wine|electron)[0-9.]*)")));
    return names.match(program).hasMatch();
}

/// The program that a command starts in the end.
QString programOf(const DesktopApplication &application)
{
    QStringList command = commandOf(application).value_or(QStringList());
    if (QFileInfo(command.value(0)).fileName() == u"env") {
        command.removeFirst();
        while (command.value(0).contains(u'='))
            command.removeFirst();
    }
    return command.value(0);
}

/// A unit's own spelling of what it must not have in its name.
QString unescapedUnit(const QString &text)
{
    QString plain = text;
    static const QRegularExpression escape(QStringLiteral("\\\\x([0-9a-f]{2})"));
    for (auto match = escape.match(plain); match.hasMatch();
        match = escape.match(plain, match.capturedStart() + 1))
        plain.replace(
            match.capturedStart(), match.capturedLength(), QChar(match.captured(1).toUShort(nullptr, 16)));
    return plain;
}

} // namespace

struct ApplicationIndex::Reading
{
    const QStringList &languages;
    /// Names of entries that were met, whether they are applications or not.
    QSet<QString> met;
    /// The real paths of folders, since links may lead in a circle.
    QSet<QString> visited;
    int depth = 0;
};

ApplicationIndex::ApplicationIndex(const QStringList &folders, const QStringList &languages)
{
    Reading reading{languages, {}, {}, 0};
    for (const QString &folder : folders)
        readFolder(reading, folder, QString());
    // What people find in menus is meant first, whatever else has the same name.
    std::ranges::stable_partition(m_applications, &DesktopApplication::isListed);
    nameAll();
    claimPrograms();
}

void ApplicationIndex::readFolder(Reading &reading, const QString &folder, const QString &prefix)
{
    const QString real = QFileInfo(folder).canonicalFilePath();
    if (real.isEmpty() || reading.visited.contains(real) || reading.depth > deepestFolder)
        return;
    reading.visited.insert(real);
    m_folders.append(folder);
    QStringList subfolders;
    QDirIterator entries(folder, QDir::AllEntries | QDir::NoDotAndDotDot);
    while (entries.hasNext() && reading.met.size() < mostEntries) {
        entries.next();
        const QString name = entries.fileName();
        const QString id = prefix + name.chopped(name.endsWith(suffix) ? suffix.size() : 0);
        if (entries.fileInfo().isDir()) {
            subfolders.append(name);
        } else if (name.endsWith(suffix) && !reading.met.contains(id)) {
            reading.met.insert(id);
            if (auto application = readApplication(entries.filePath(), id, reading.languages))
                m_applications.append(*application);
        }
    }
    ++reading.depth;
    for (const QString &name : std::as_const(subfolders))
        readFolder(reading, folder + u'/' + name, prefix + name + u'-');
    --reading.depth;
}

void ApplicationIndex::nameAll()
{
    // The strongest claims come first.
    const auto claim = [this](const QString &name, qsizetype place) {
        if (!name.isEmpty())
            insertFirst(m_byName, name.toLower(), place);
    };
    for (qsizetype i = 0; i < m_applications.size(); ++i) {
        const DesktopApplication &application = m_applications[i];
        m_byId.insert(application.id, i);
        m_byPath.insert(application.path, i);
        if (!application.flatpak.isEmpty())
            m_byFlatpak.insert(application.flatpak, i);
        claim(application.id, i);
    }
    for (const KnownApplication &known : knownApplications()) {
        for (const QString &id : known.desktopIds) {
            if (m_byId.contains(id))
                claim(known.identifier, m_byId.value(id));
        }
    }
    for (qsizetype i = 0; i < m_applications.size(); ++i)
        claim(m_applications[i].windowClass, i);
    for (qsizetype i = 0; i < m_applications.size(); ++i) {
        for (const QString &end : endsOf(m_applications[i]))
            claim(end, i);
    }
}

void ApplicationIndex::claimPrograms()
{
    for (qsizetype i = 0; i < m_applications.size(); ++i) {
        const QString program = programOf(m_applications[i]);
        const QString name = QFileInfo(program).fileName();
        if (name.isEmpty() || isLauncher(name))
            continue;
        insertFirst(m_byProgramName, name, i);
        const QFileInfo real(QFileInfo(QStandardPaths::findExecutable(program)).canonicalFilePath());
        if (real.exists() && !isLauncher(real.fileName()))
            insertFirst(m_byProgram, real.filePath(), i);
    }
}

const DesktopApplication *ApplicationIndex::application(
    const QHash<QString, qsizetype> &names, const QString &name) const
{
    const auto found = names.constFind(name);
    return found == names.constEnd() ? nullptr : &m_applications[*found];
}

const DesktopApplication *ApplicationIndex::find(const QString &identifier) const
{
    const QString name = identifier.chopped(identifier.endsWith(suffix) ? suffix.size() : 0);
    const auto *const exact = application(m_byId, name);
    return exact ? exact : application(m_byName, name.toLower());
}

const DesktopApplication *ApplicationIndex::atPath(const QString &path) const
{
    return application(m_byPath, path);
}

QStringList ApplicationIndex::identifiersOf(const DesktopApplication *application)
{
    QStringList identifiers;
    if (application)
        identifiers.append(application->id);
    for (const KnownApplication &known : knownApplications()) {
        if (application && known.desktopIds.contains(application->id))
            identifiers.append(known.identifier);
    }
    return identifiers;
}

QStringList ApplicationIndex::identifiersOf(const ProcessIdentity &process) const
{
    if (!process.flatpak.isEmpty()) {
        const auto *const flatpak = application(m_byFlatpak, process.flatpak);
        return identifiersOf(flatpak ? flatpak : application(m_byId, process.flatpak));
    }
    // A known program counts even where its entry is missing.
    if (const auto *const known = knownApplication(process)) {
        for (const QString &id : known->desktopIds) {
            if (m_byId.contains(id))
                return {id, known->identifier};
        }
        return {known->identifier};
    }
    const auto *const exact = application(m_byProgram, process.executable);
    return identifiersOf(
        exact ? exact : application(m_byProgramName, QFileInfo(process.executable).fileName()));
}

QStringList ApplicationIndex::identifiersOfUnit(const QString &unit) const
{
    // "app-gnome-org.example.Player-1234.scope", "app-org.example.Player@abc.service"
    static const QRegularExpression shape(QRegularExpression::anchoredPattern(
        QStringLiteral("app-(?:[^-]+-)?([^-@]+)(?:-[^-]+\\.scope|(?:@[^@]*)?\\.service)")));
    const auto match = shape.match(unit);
    return match.hasMatch() ? identifiersOf(application(m_byId, unescapedUnit(match.captured(1))))
                            : QStringList();
}

} // namespace brindle
