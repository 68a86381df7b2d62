#include "platform/linux/files/XdgLoginItem.h"

#include "foundation/Files.h"
#include "platform/linux/files/KeyFile.h"

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
    return KeyFile::escaped(u'"' + word + u'"');
}

/// The keys of the main group; none when there is no such file.
Entry readEntry(const QString &path)
{
    return KeyFile::group(Files::read(path).value_or(QByteArray()), QStringLiteral("Desktop Entry"));
}

bool starts(const Entry &entry)
{
    const auto isTrue = [&](const QString &key, const QString &otherwise) {
        return entry.value(key, otherwise) == u"true";
    };
    const QString program = KeyFile::unescaped(entry.value(QStringLiteral("TryExec")));
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
            .arg(KeyFile::escaped(m_program), commandWord(m_program)));
}

bool XdgLoginItem::unregisterItem()
{
    // The system's entry, if there is one, can only be hidden by one of the user's.
    if (std::ranges::any_of(m_systemEntries, [](const QString &path) { return QFileInfo::exists(path); }))
        return write(m_userEntry, QStringLiteral("Hidden=true\n"));
    return !QFileInfo::exists(m_userEntry) || QFile::remove(m_userEntry);
}

} // namespace brindle
