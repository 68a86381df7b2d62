#include "adapter/linux/CommandLine.h"

#include <algorithm>
#include <array>

namespace brindle::adapter {

namespace {

using namespace Qt::StringLiterals;

struct Numbered
{
    int number;
    Command command;
};

constexpr std::array commands{Numbered{0, Command::play}, Numbered{1, Command::pause},
    Numbered{4, Command::next}, Numbered{5, Command::previous}};

/// Digits only: no sign, no space.
std::optional<qint64> wholeNumber(const QString &word)
{
    const bool isPlain = std::all_of(
        word.cbegin(), word.cend(), [](QChar letter) { return letter >= u'0' && letter <= u'9'; });
    bool isNumber = false;
    const qint64 number = word.toLongLong(&isNumber);
    return isPlain && isNumber ? std::optional(number) : std::nullopt;
}

std::optional<Request> stream(const QStringList &options)
{
    constexpr qint64 longest = 60'000;
    static const QString debounce = u"--debounce="_s;
    StreamRequest request;
    for (const QString &option : options) {
        const auto milliseconds = wholeNumber(option.mid(debounce.size()));
        if (!option.startsWith(debounce) || !milliseconds || *milliseconds > longest)
            return std::nullopt;
        request.debounce = double(*milliseconds) / 1000;
    }
    return request;
}

std::optional<Request> send(qint64 number)
{
    const auto command = number <= 5 ? commandOfNumber(int(number)) : std::nullopt;
    return command ? std::optional<Request>(SendRequest{*command}) : std::nullopt;
}

} // namespace

std::optional<Command> commandOfNumber(int number)
{
    const auto found = std::find_if(
        commands.begin(), commands.end(), [number](const Numbered &entry) { return entry.number == number; });
    return found == commands.end() ? std::nullopt : std::optional(found->command);
}

int numberOfCommand(Command command)
{
    return std::find_if(commands.begin(), commands.end(), [command](const Numbered &entry) {
        return entry.command == command;
    })->number;
}

std::optional<Request> parseCommandLine(const QStringList &words)
{
    if (words.isEmpty())
        return std::nullopt;
    if (words.first() == u"stream")
        return stream(words.mid(1));
    const auto number = words.size() == 2 ? wholeNumber(words.last()) : std::nullopt;
    if (!number)
        return std::nullopt;
    if (words.first() == u"send")
        return send(*number);
    if (words.first() == u"seek")
        return SeekRequest{*number};
    return std::nullopt;
}

} // namespace brindle::adapter
