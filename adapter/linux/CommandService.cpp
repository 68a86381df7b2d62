#include "adapter/linux/CommandService.h"

#include "adapter/linux/Player.h"

#include <QDBusMessage>

#include <unistd.h>
#include <utility>

namespace brindle::adapter {

namespace {

using namespace Qt::StringLiterals;

} // namespace

CommandService::CommandService(const QDBusConnection &bus, std::function<Player *()> player)
    : m_bus(bus)
    , m_player(std::move(player))
{
    m_bus.registerObject(path, this, QDBusConnection::ExportAllSlots);
    auto request = QDBusMessage::createMethodCall(
        u"org.freedesktop.DBus"_s, u"/org/freedesktop/DBus"_s, u"org.freedesktop.DBus"_s, u"RequestName"_s);
    request << nameOfParent() << 0U;
    // Where the name is refused, commands choose a player by themselves.
    m_bus.send(request);
}

QString CommandService::nameOfParent()
{
    return u"com.brindle.MediaRemoteAdapter.parent%1"_s.arg(::getppid());
}

bool CommandService::Send(int number)
{
    const auto command = commandOfNumber(number);
    return command
        && answerLater([command](Player &player, const Player::Done &done) { player.send(*command, done); });
}

bool CommandService::Seek(qlonglong position)
{
    return position >= 0 && answerLater([position](Player &player, const Player::Done &done) {
        player.seek(double(position) / 1e6, done);
    });
}

bool CommandService::answerLater(const std::function<void(Player &, Player::Done)> &request)
{
    Player *player = m_player();
    if (!player)
        return false;
    setDelayedReply(true);
    request(
        *player, [bus = m_bus, call = message()](bool isThrough) { bus.send(call.createReply(isThrough)); });
    return true;
}

} // namespace brindle::adapter
