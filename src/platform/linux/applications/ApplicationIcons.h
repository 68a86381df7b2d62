#pragma once

#include <QImage>
#include <QStringList>

namespace brindle {

/// Pictures of applications and files, all of them square. Main thread.
class ApplicationIcons
{
public:
    /// Pixels at the most.
    static constexpr int size = 128;

    /// `dataFolders` are looked into where the desktop's icon theme has nothing.
    explicit ApplicationIcons(const QStringList &dataFolders) : m_dataFolders(dataFolders) { }

    /// An icon by its name in the theme or by its absolute path; null when there is none.
    QImage find(const QString &icon) const;
    /// The icon of whatever has none.
    static QImage plain();

private:
    QString fileOf(const QString &name) const;

    QStringList m_dataFolders;
};

} // namespace brindle
