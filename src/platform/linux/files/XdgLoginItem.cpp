#include "platform/linux/files/XdgLoginItem.h"

#include "foundation/Files.h"

#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QStandardPaths>

#include <algorithm>

namespace brindle {

namespace {

using Entry = QHash<QString, QString>;

QString entryPath(const QString &configuration)
{
    return configuration + QStringLiteral("/autostart/com.brindle.app.desktop");
}

/// Escapes that hold for every text in a desktop entry.
QString escaped(QString text)
{
    return text.replace(u'\\', QStringLiteral("\\\\"));
}

QString unescaped(QString text)
{
    return text.replace(QStringLiteral("\\\\"), QStringLiteral("\\"));
}

/// A path as one word of a command line, which has rules of its own on top.
QString commandWord(const QString &path)
{
    QString word;
    for (const QChar character : path) {
        if (QStringLiteral("\"`$\\").contains(character))
            word += u'\\';
        else if (character == u'%')
            word += u'%';
        word += character;
    }
    return escaped(u'"' + word + u'"');
}

/// The keys of the main group; none when there is no such file.
Entry readEntry(const QString &path)
{
    Entry entry;
    bool isInMainGroup = false;
    const auto lines = QString::fromUtf8(Files::read(path).value_or(QByteArray())).split(u'\n');
    for (const QString &line : lines) {
        const QString text = line.trimmed();
        if (text.startsWith(u'['))
            isInMainGroup = text == u"[Desktop Entry]";
        else if (isInMainGroup && !text.startsWith(u'#') && text.contains(u'='))
            entry.insert(text.section(u'=', 0, 0).trimmed(), text.section(u'=', 1).trimmed());
    }
    return entry;
}

bool starts(const Entry &entry)
{
    const auto isTrue = [&](const QString &key, const QString &otherwise) {
        return entry.value(key, otherwise) == u"true";
    };
    const QString program = unescaped(entry.value(QStringLiteral("TryExec")));
    const bool exists = program.isEmpty() || !QStandardPaths::findExecutable(program).isEmpty();
    return !entry.isEmpty() && exists && !isTrue(QStringLiteral("Hidden"), QStringLiteral("false"))
        && isTrue(QStringLiteral("X-GNOME-Autostart-enabled"), QStringLiteral("true"));
}

bool write(const QString &path, const QString &keys)
{
    const QString text = QStringLiteral("[Desktop Entry]\nType=Application\nName=Velmora\n") + keys;
    return !Files::writeAtomically(path, text.toUtf8());
}

} // namespace

XdgLoginItem::XdgLoginItem(const XdgDirectories &directories, const QString &program)
    : m_userEntry(entryPath(directories.configuration()))
    , m_program(program)
{
    for (const QString &folder : directories.systemConfiguration())
        m_systemEntries.append(entryPath(folder));
}

LoginItem::Status XdgLoginItem::status() const
{
    for (const QString &path : QStringList(m_userEntry) + m_systemEntries) {
        if (QFileInfo::exists(path))
            return starts(readEntry(path)) ? Status::enabled : Status::notRegistered;
    }
    return Status::notRegistered;
}

bool XdgLoginItem::registerItem()
{
    return write(m_userEntry,
        QStringLiteral("Comment=The island at the top of the screen\nTryExec=%1\nExec=%2\nTerminal=false\n")
            .arg(escaped(m_program), commandWord(m_program)));
}

bool XdgLoginItem::unregisterItem()
{
    // The system's entry, if there is one, can only be hidden by one of the user's.
    if (std::ranges::any_of(m_systemEntries, [](const QString &path) { return QFileInfo::exists(path); }))
        return write(m_userEntry, QStringLiteral("Hidden=true\n"));
    return !QFileInfo::exists(m_userEntry) || QFile::remove(m_userEntry);
}

} // namespace brindle
