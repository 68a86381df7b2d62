#include "adapter/linux/CommandRun.h"

#include "adapter/linux/CommandService.h"

#include <utility>

namespace brindle::adapter {

namespace {

using namespace Qt::StringLiterals;

/// Seconds that players have to say what they do, and that one has to do as it is told.
constexpr double lookingTime = 0.3;
constexpr double patience = 1;

QDBusMessage callOf(const CommandRequest &request)
{
    const auto *send = std::get_if<SendRequest>(&request);
    auto call = QDBusMessage::createMethodCall(CommandService::nameOfParent(), CommandService::path,
        CommandService::interface, send ? u"Send"_s : u"Seek"_s);
    if (send)
        call << numberOfCommand(send->command);
    else
        call << qlonglong(std::get<SeekRequest>(request).position);
    call.setAutoStartService(false);
    return call;
}

} // namespace

std::optional<bool> runThroughStream(const QDBusConnection &bus, const CommandRequest &request)
{
    const QDBusMessage reply = bus.call(callOf(request), QDBus::Block, int(patience * 1000));
    if (reply.type() == QDBusMessage::ReplyMessage)
        return reply.arguments().value(0).toBool();
    const bool isMissing = reply.errorName() == u"org.freedesktop.DBus.Error.ServiceUnknown"
        || reply.errorName() == u"org.freedesktop.DBus.Error.NameHasNoOwner";
    // Any other failure may come after the player has heard of it; nothing is done twice.
    return isMissing ? std::nullopt : std::optional(false);
}

CommandRun::CommandRun(const QDBusConnection &bus, Scheduler &scheduler, const CommandRequest &request)
    : m_request(request)
    , m_players(bus, scheduler)
    , m_lookingTime(scheduler.after(lookingTime, [this] { run(); }))
    , m_deadline(scheduler.after(lookingTime + patience, [this] { Q_EMIT ended(false); }))
{
    connect(&m_players, &Players::changed, this, &CommandRun::look);
}

void CommandRun::look()
{
    if (m_players.haveAnswered())
        run();
}

void CommandRun::run()
{
    if (std::exchange(m_hasRun, true))
        return;
    Player *player = m_players.chosen();
    if (!player) {
        Q_EMIT ended(false);
        return;
    }
    const auto done = [this](bool isThrough) { Q_EMIT ended(isThrough); };
    if (const auto *send = std::get_if<SendRequest>(&m_request))
        player->send(send->command, done);
    else
        player->seek(double(std::get<SeekRequest>(m_request).position) / 1e6, done);
}

} // namespace brindle::adapter
