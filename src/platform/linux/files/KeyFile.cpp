#include "platform/linux/files/KeyFile.h"

#include <QStringTokenizer>

namespace brindle::KeyFile {

QHash<QString, QString> group(const QByteArray &text, const QString &name)
{
    QHash<QString, QString> keys;
    bool isInGroup = false;
    const QString whole = QString::fromUtf8(text);
    for (const QStringView part : QStringView(whole).tokenize(u'\n')) {
        const QStringView line = part.trimmed();
        const qsizetype equals = line.indexOf(u'=');
        if (line.startsWith(u'['))
            isInGroup = line.endsWith(u']') && line.sliced(1).chopped(1) == name;
        else if (isInGroup && !line.startsWith(u'#') && equals >= 0)
            keys.insert(
                line.first(equals).trimmed().toString(), line.sliced(equals + 1).trimmed().toString());
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
