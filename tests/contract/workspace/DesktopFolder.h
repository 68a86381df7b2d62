#pragma once

#include <QByteArray>
#include <QString>
#include <QTemporaryDir>

namespace brindle::test {

/// A folder in which a test lays out the files of a desktop.
class DesktopFolder
{
public:
    QString path(const QString &name) const { return m_folder.filePath(name); }
    /// Writes a file, with its folders, as an installation does: whole, under its name at once.
    void write(const QString &name, const QByteArray &contents) const;
    /// An entry "data/applications/NAME.desktop" with these further lines.
    void writeEntry(const QString &name, const QByteArray &lines) const;
    void remove(const QString &name) const;

private:
    QTemporaryDir m_folder;
};

} // namespace brindle::test
