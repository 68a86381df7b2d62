#pragma once

#include "platform/AccessibilitySettings.h"
#include "platform/linux/dbus/BusService.h"

#include <QDBusMessage>
#include <QMap>
#include <QVariantMap>

#include <memory>

namespace brindle {

class BusConnection;

/// The desktop's settings as its portal tells them: motion is to be reduced where the desktop says so, or has
/// its animations switched off. Without a portal nothing is reduced; when one goes, what it said last stands.
class PortalAccessibilitySettings : public AccessibilitySettings
{
    Q_OBJECT

public:
    /// Begins to look at once, without waiting for anything.
    explicit PortalAccessibilitySettings(BusConnection &sessionBus);
    ~PortalAccessibilitySettings() override;

    bool reduceMotion() const override { return m_reduceMotion; }

private Q_SLOTS:
    void settingChanged(const QDBusMessage &signal);

private:
    void begin(const QString &owner);
    void end();
    void readAll();
    void evaluate();

    BusService m_service;
    /// The present portal's unique name.
    QString m_owner;
    /// What waits for the present portal's answer goes with the portal.
    std::unique_ptr<QObject> m_session;
    /// From namespace to keys and values.
    QMap<QString, QVariantMap> m_settings;
    bool m_reduceMotion = false;
};

} // namespace brindle
