#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>

/// Files of groups, keys and values, as desktops keep them. Any thread.
namespace brindle::KeyFile {

/// The keys of one group with their values as they stand; empty when there is none. A line that is none of
/// the format's is passed over.
QHash<QString, QString> group(const QByteArray &text, const QString &name);

/// A value without the escapes that hold for every text.
QString unescaped(const QString &value);
/// The reverse, as far as a path needs it.
QString escaped(QString text);

} // namespace brindle::KeyFile
