#pragma once

#include "adapter/linux/Players.h"

#include <optional>

namespace brindle::adapter {

using CommandRequest = std::variant<SendRequest, SeekRequest>;

/// Hands a command to the stream of the same parent process: whether it got through to the player that the
/// stream shows; absent when there is no such stream. Waits for the answer, for a second at most.
std::optional<bool> runThroughStream(const QDBusConnection &bus, const CommandRequest &request);

/// Runs a command where no stream shows anything: on the player that one would show which starts now.
class CommandRun : public QObject
{
    Q_OBJECT

public:
    CommandRun(const QDBusConnection &bus, Scheduler &scheduler, const CommandRequest &request);

Q_SIGNALS:
    void ended(bool isThrough);

private:
    void look();
    void run();

    const CommandRequest m_request;
    Players m_players;
    bool m_hasRun = false;
    Delay m_lookingTime;
    Delay m_deadline;
};

} // namespace brindle::adapter
