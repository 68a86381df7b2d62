#pragma once

#include "platform/Directories.h"

#include <QProcessEnvironment>
#include <QStringList>

namespace brindle {

/// The user's folders as the desktop's base directories name them, taken from the environment once.
class XdgDirectories : public Directories
{
public:
    explicit XdgDirectories(
        const QProcessEnvironment &environment = QProcessEnvironment::systemEnvironment());

    QString applicationSupport() const override { return m_data; }
    QString caches() const override { return m_cache; }
    QString home() const { return m_home; }
    /// The user's folder for configuration.
    QString configuration() const { return m_config; }
    /// The system's folders, the most important first.
    QStringList systemConfiguration() const { return m_systemConfig; }
    QStringList systemData() const { return m_systemData; }

private:
    QString m_home;
    QString m_data;
    QString m_cache;
    QString m_config;
    QStringList m_systemConfig;
    QStringList m_systemData;
};

} // namespace brindle
