#include "platform/linux/files/KeyFile.h"

namespace brindle::KeyFile {

QHash<QString, QString> group(const QByteArray &text, const QString &name)
{
    QHash<QString, QString> keys;
    bool isInGroup = false;
    const auto lines = QString::fromUtf8(text).split(u'\n');
    for (const QString &whole : lines) {
        const QString line = whole.trimmed();
        if (line.startsWith(u'['))
            isInGroup = line.size() == name.size() + 2 && line.endsWith(u']') && line.mid(1).startsWith(name);
        else if (isInGroup && !line.startsWith(u'#') && line.contains(u'='))
            keys.insert(line.section(u'=', 0, 0).trimmed(), line.section(u'=', 1).trimmed());
    }
    return keys;
}

QString unescaped(const QString &value)
{
    QString text;
    text.reserve(value.size());
    for (qsizetype i = 0; i < value.size(); ++i) {
        const bool isEscape = value[i] == u'\\' && i + 1 < value.size();
        const QChar next = isEscape ? value[i + 1] : QChar();
        const qsizetype known = isEscape ? QStringLiteral("sntr\\").indexOf(next) : -1;
        if (known < 0) {
            text += value[i];
            continue;
        }
        text += QStringLiteral(" \n\t\r\\")[known];
        ++i;
    }
    return text;
}

QString escaped(QString text)
{
    return text.replace(u'\\', QStringLiteral("\\\\"));
}

} // namespace brindle::KeyFile
