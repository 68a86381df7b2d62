#pragma once

#include <QDBusConnection>
#include <QProcess>
#include <QStringList>
#include <QTemporaryDir>

namespace brindle::test {

/// A message bus of the test's own, on which nothing starts behind its back. Ends with the object.
class PrivateBus
{
public:
    PrivateBus();
    ~PrivateBus();
    PrivateBus(const PrivateBus &) = delete;
    PrivateBus &operator=(const PrivateBus &) = delete;

    const QString &address() const { return m_address; }
    /// The test's own connection, for asking and scripting.
    const QDBusConnection &control() const { return m_control; }

    bool hasOwner(const QString &name) const;
    /// Waits until somebody owns `name`, or until nobody does.
    bool waitForName(const QString &name) const;
    bool waitForNoName(const QString &name) const;

    /// Returns when all that was sent to `connection` until now has been delivered to its receivers, and all
    /// that `service` was asked through it has been answered.
    static void deliverAll(
        const QDBusConnection &connection, const QString &service = QStringLiteral("org.freedesktop.DBus"));

    /// Ends the bus under everyone on it.
    void end();

private:
    QTemporaryDir m_folder;
    QProcess m_daemon;
    QString m_address;
    QDBusConnection m_control;
};

/// Makes `process` end when this one does, however that comes about.
void endWithUs(QProcess &process);

} // namespace brindle::test
