#pragma once

#include "foundation/SystemScheduler.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QStringList>
#include <QVariantMap>

namespace brindle::test {

class PrivateBus;

/// A player on a private bus that says what it is told to say, true or not, and keeps what it was asked to
/// do. It has a connection of its own, as a program has.
class ScriptedPlayer : public QDBusVirtualObject
{
    Q_OBJECT

public:
    enum class Behaviour {
        answers,
        /// It stays on the bus and answers nothing; what it was asked waits.
        hangs,
        /// It refuses every question.
        refuses,
        /// It answers a question for properties with a number.
        babbles,
    };

    /// Comes to the bus with no name yet. `name` is what stands below "org.mpris.MediaPlayer2.".
    ScriptedPlayer(const PrivateBus &bus, const QString &name);
    ~ScriptedPlayer() override;

    /// What it answers when asked; to be changed in silence.
    QVariantMap properties;
    /// The same of the application.
    QVariantMap application;
    /// Commands in order, with their arguments: "Play", "SetPosition /track/1 5000000".
    QStringList commands;
    /// Commands that it refuses.
    QStringList refused;

    /// Takes its name on the bus.
    void appear();
    void appearPlaying(const QString &title);
    /// Leaves the bus as one does that crashes.
    void quit();
    void behave(Behaviour behaviour);

    /// Changes properties and tells of it.
    void change(const QVariantMap &changed);
    /// Tells what may not be true.
    void tell(const QVariantMap &changed);
    /// Any signal of any shape.
    void signal(const QString &interface, const QString &name, const QVariantList &arguments) const;
    /// From here on the position, in seconds, is this, and runs while it plays.
    void setPosition(double seconds);
    /// The same, with a signal.
    void jump(double seconds);

    void play(const QString &title);
    void setStatus(const QString &status);
    void setMetadata(const QVariantMap &metadata);

    bool handleMessage(const QDBusMessage &message, const QDBusConnection &connection) override;
    QString introspect(const QString &path) const override;

private:
    void answer(const QDBusMessage &message);
    QVariant position() const;
    QVariantMap playerProperties() const;
    QVariant answerToGet(const QString &key) const;

    const QString m_name;
    QDBusConnection m_connection;
    Behaviour m_behaviour = Behaviour::answers;
    QList<QDBusMessage> m_waiting;
    SystemScheduler m_time;
    double m_position = 0;
    double m_positionAt = 0;
};

/// Metadata of a track with this title, and an id and a length made from it.
QVariantMap track(const QString &title);

} // namespace brindle::test
