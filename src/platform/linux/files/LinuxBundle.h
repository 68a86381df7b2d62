#pragma once

#include "platform/Bundle.h"

#include <QStringList>
#include <QVariantMap>

namespace brindle {

/// What is shipped with the program: compiled into it, or installed beside it where other programs must find
/// it.
class LinuxBundle : public Bundle
{
public:
    /// Folders that hold resources, asked in this order; the information dictionary is "Info.json" in the
    /// first that has one. And the folder that holds the private frameworks, if it is there.
    explicit LinuxBundle(
        const QStringList &folders = usualFolders(), const QString &frameworks = usualFrameworks());

    std::optional<QString> resourcePath(const QString &name) const override;
    std::optional<QString> privateFrameworksPath() const override { return m_frameworks; }
    QVariant infoValue(const QString &key) const override { return m_info.value(key); }

    /// Within the program, then "share/velmora" beside the folder of the program.
    static QStringList usualFolders();
    /// "libexec/velmora" beside the folder of the program.
    static QString usualFrameworks();

private:
    QStringList m_folders;
    std::optional<QString> m_frameworks;
    QVariantMap m_info;
};

} // namespace brindle
