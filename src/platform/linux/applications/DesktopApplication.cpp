#include "platform/linux/applications/DesktopApplication.h"

#include "foundation/Files.h"
#include "platform/linux/files/KeyFile.h"

#include <QRegularExpression>
#include <QStandardPaths>

namespace brindle {

namespace {

using Entry = QHash<QString, QString>;

/// Far longer than any entry in all languages.
constexpr qsizetype longestEntry = 0x100000;

QString text(const Entry &entry, const QString &key)
{
    return KeyFile::unescaped(entry.value(key));
}

bool isTrue(const Entry &entry, const QString &key)
{
    return entry.value(key) == u"true";
}

QString localText(const Entry &entry, const QString &key, const QStringList &languages)
{
    for (const QString &language : languages) {
        const auto found = entry.constFind(key + u'[' + language + u']');
        if (found != entry.constEnd())
            return KeyFile::unescaped(*found);
    }
    return text(entry, key);
}

bool isInstalled(const Entry &entry)
{
    const QString program = text(entry, QStringLiteral("TryExec"));
    return program.isEmpty() || !QStandardPaths::findExecutable(program).isEmpty();
}

/// Cuts a command at its blanks; what is quoted stays together. Absent when a quote has no end.
std::optional<QStringList> words(const QString &command)
{
    QStringList words;
    bool isQuoted = false;
    bool isInWord = false;
    for (qsizetype i = 0; i < command.size(); ++i) {
        if (command[i] == u' ' && !isQuoted) {
            isInWord = false;
            continue;
        }
        if (!isInWord)
            words.append(QString());
        isInWord = true;
        if (command[i] == u'"') {
            isQuoted = !isQuoted;
            continue;
        }
        if (command[i] == u'\\' && isQuoted && i + 1 < command.size())
            ++i; // the next character stands for itself
        words.last() += command[i];
    }
    return isQuoted ? std::nullopt : std::optional(words);
}

/// What the field codes of a command stand for.
class Fields
{
public:
    Fields(const DesktopApplication &application, const std::optional<QUrl> &url)
        : m_application(application)
        , m_url(url)
    { }

    QStringList expand(const QString &word) const
    {
        const bool isIcon = word == u"%i";
        const bool isDocument = word == u"%u" || word == u"%U" || word == u"%f" || word == u"%F";
        if (isIcon && !m_application.icon.isEmpty())
            return {QStringLiteral("--icon"), m_application.icon};
        if (isIcon || (isDocument && !m_url))
            return {};
        return {replaced(word)};
    }

private:
    QString replaced(const QString &word) const
    {
        QString text;
        for (qsizetype i = 0; i < word.size(); ++i) {
            if (word[i] == u'%' && i + 1 < word.size())
                text += value(word[++i]);
            else
                text += word[i];
        }
        return text;
    }

    QString value(QChar code) const
    {
        switch (code.unicode()) {
        case u'%':
            return QStringLiteral("%");
        case u'c':
            return m_application.name;
        case u'k':
            return m_application.path;
        case u'u':
        case u'U':
            return m_url ? m_url->toString(QUrl::FullyEncoded) : QString();
        case u'f':
        case u'F':
            return m_url ? (m_url->isLocalFile() ? m_url->toLocalFile() : m_url->toString(QUrl::FullyEncoded))
                         : QString();
        default: // those of old, which mean nothing any more
            return {};
        }
    }

    const DesktopApplication &m_application;
    const std::optional<QUrl> &m_url;
};

bool takesDocuments(const QStringList &words)
{
    return !words.filter(QRegularExpression(QStringLiteral("(?<!%)(?:%%)*%[uUfF]"))).isEmpty();
}

} // namespace

QHash<QString, QString> readDesktopEntry(const QString &path)
{
    const auto text = Files::readAtMost(longestEntry, path);
    return KeyFile::group(text.value_or(QByteArray()), QStringLiteral("Desktop Entry"));
}

std::optional<DesktopApplication> readApplication(
    const QString &path, const QString &id, const QStringList &languages)
{
    const Entry entry = readDesktopEntry(path);
    if (entry.value(QStringLiteral("Type")) != u"Application" || isTrue(entry, QStringLiteral("Hidden"))
        || !isInstalled(entry))
        return std::nullopt;
    DesktopApplication application;
    application.id = id;
    application.path = path;
    application.name = localText(entry, QStringLiteral("Name"), languages);
    application.icon = localText(entry, QStringLiteral("Icon"), languages);
    application.command = text(entry, QStringLiteral("Exec"));
    application.workingFolder = text(entry, QStringLiteral("Path"));
    application.windowClass = text(entry, QStringLiteral("StartupWMClass"));
    application.flatpak = text(entry, QStringLiteral("X-Flatpak"));
    application.isListed = !isTrue(entry, QStringLiteral("NoDisplay"));
    application.wantsTerminal = isTrue(entry, QStringLiteral("Terminal"));
    return application;
}

QStringList entryLanguages(const QString &locale)
{
    const QString modifier = locale.contains(u'@') ? u'@' + locale.section(u'@', 1) : QString();
    const QString place = locale.section(u'@', 0, 0).section(u'.', 0, 0);
    const QString language = place.section(u'_', 0, 0);
    if (language.isEmpty() || language == u"C" || language == u"POSIX")
        return {};
    QStringList spellings{place + modifier, place, language + modifier, language};
    spellings.removeDuplicates();
    return spellings;
}

std::optional<QStringList> commandOf(const DesktopApplication &application, const std::optional<QUrl> &url)
{
    const auto parts = words(application.command);
    if (!parts || parts->isEmpty())
        return std::nullopt;
    const Fields fields(application, url);
    QStringList command;
    for (const QString &word : *parts)
        command += fields.expand(word);
    if (url && !takesDocuments(*parts))
        command.append(url->toString(QUrl::FullyEncoded));
    return command.value(0).isEmpty() ? std::nullopt : std::optional(command);
}

} // namespace brindle
