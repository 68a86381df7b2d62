#pragma once

#include <QStringList>

#include <optional>
#include <variant>

namespace brindle::adapter {

enum class Command { play, pause, next, previous };

struct StreamRequest
{
    /// Seconds for which changes are gathered before they are told.
    double debounce = 0;
};

struct SendRequest
{
    Command command;
};

struct SeekRequest
{
    /// Microseconds from the start of the track, 0 or above.
    qint64 position;
};

using Request = std::variant<StreamRequest, SendRequest, SeekRequest>;

/// The command of a number as it stands on the command line and on the bus.
std::optional<Command> commandOfNumber(int number);
int numberOfCommand(Command command);

/// What the words after the program's name ask for; absent when they make no sense.
std::optional<Request> parseCommandLine(const QStringList &words);

} // namespace brindle::adapter
