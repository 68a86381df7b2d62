#pragma once

#include "platform/LoginItem.h"
#include "platform/linux/files/XdgDirectories.h"

#include <QCoreApplication>

namespace brindle {

/// Starting with the session by an entry in the desktop's autostart folder.
///
/// The user's own entry decides; without one, the first of the system's. An entry that is hidden, switched
/// off, or names a program that is gone starts nothing and counts as not registered.
class XdgLoginItem : public LoginItem
{
public:
    /// `program` is what the session is to start, an absolute path.
    explicit XdgLoginItem(const XdgDirectories &directories = XdgDirectories(),
        const QString &program = QCoreApplication::applicationFilePath());

    Status status() const override;
    [[nodiscard]] bool registerItem() override;
    [[nodiscard]] bool unregisterItem() override;

private:
    QStringList m_systemEntries;
    QString m_userEntry;
    QString m_program;
};

} // namespace brindle
