#pragma once

#include <QDBusConnection>
#include <QDBusContext>
#include <QObject>

#include <functional>

namespace brindle::adapter {

class Player;

/// What a stream offers on the bus to the commands of the same parent process: to pass them on to the player
/// that it shows.
///
/// The name on the bus has the parent's process number in it, so that commands find the stream of the program
/// that they come from and no other one. A second stream of the same parent waits for the name.
class CommandService : public QObject, protected QDBusContext
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "com.brindle.MediaRemoteAdapter")

public:
    /// `player` gives the player that is shown, null for none.
    CommandService(const QDBusConnection &bus, std::function<Player *()> player);

    static inline const QString path = QStringLiteral("/com/brindle/MediaRemoteAdapter");
    static inline const QString interface = QStringLiteral("com.brindle.MediaRemoteAdapter");
    /// The name of the stream of this process's parent.
    static QString nameOfParent();

public Q_SLOTS:
    /// A number as on the command line. The answer: whether it got through to a player.
    bool Send(int number);
    /// Microseconds. The same answer.
    bool Seek(qlonglong position);

private:
    bool answerLater(const std::function<void(Player &, std::function<void(bool)>)> &request);

    QDBusConnection m_bus;
    std::function<Player *()> m_player;
};

} // namespace brindle::adapter
