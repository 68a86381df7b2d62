#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QProcess>
#include <QVariantList>

#include <functional>

namespace brindle::test {

class PrivateBus;

/// A scripted daemon on a private bus: a process of its own, so that it can be killed and frozen as a real
/// one.
class DbusMock
{
public:
    /// Plays the daemon that `templateName` knows; `parameters` is JSON.
    DbusMock(
        PrivateBus &bus, const QString &name, const QString &templateName, const QString &parameters = {});
    /// Plays a daemon with one object that has nothing yet.
    struct Bare
    {
        PrivateBus &bus;
        QString name;
        QString path;
        QString interface;
    };
    explicit DbusMock(const Bare &bare);
    ~DbusMock();
    DbusMock(const DbusMock &) = delete;
    DbusMock &operator=(const DbusMock &) = delete;

    /// Whether it has come up.
    bool isThere() const { return m_isThere; }

    /// Calls a method of one of its objects and waits for the reply.
    QDBusMessage call(const QString &path, const QString &interface, const QString &method,
        const QVariantList &arguments = {}) const;
    /// The same of the scripting interface that all its objects have.
    QDBusMessage script(const QString &path, const QString &method, const QVariantList &arguments = {}) const;

    /// Ends it as a crash would, and waits until the bus knows.
    void kill();
    /// It stays on the bus and answers nothing.
    void freeze();
    void thaw();

    /// Returns when it has answered all that it was asked through `connection`, as far as it answers at all,
    /// and all of that has been delivered.
    void deliverAll(const QDBusConnection &connection) const;

private:
    DbusMock(PrivateBus &bus, const QString &name, const QStringList &arguments);

    PrivateBus &m_bus;
    const QString m_name;
    QProcess m_process;
    bool m_isThere = false;
    bool m_isFrozen = false;
};

/// Returns when everyone behind `connection` has heard what `daemon` said (without one, what the bus itself
/// said), has asked what that made them ask, and has heard the answers. That takes a few rounds; `afterEach`
/// runs after each.
void deliverInRounds(
    const QDBusConnection &connection, const DbusMock *daemon,
    const std::function<void()> &afterEach = [] { });

} // namespace brindle::test
