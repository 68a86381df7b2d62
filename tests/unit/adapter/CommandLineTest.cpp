#include "adapter/linux/CommandLine.h"

#include <gmock/gmock.h>

namespace brindle::adapter {
namespace {

using namespace Qt::StringLiterals;

template <typename T> std::optional<T> parsed(const QStringList &words)
{
    const auto request = parseCommandLine(words);
    const auto *wanted = request ? std::get_if<T>(&*request) : nullptr;
    return wanted ? std::optional(*wanted) : std::nullopt;
}

TEST(CommandLine, StreamTakesItsDebounceInMilliseconds)
{
    const auto request = parsed<StreamRequest>({u"stream"_s, u"--debounce=80"_s});
    ASSERT_TRUE(request);
    EXPECT_DOUBLE_EQ(request->debounce, 0.08);
}

TEST(CommandLine, StreamGathersNothingUnlessTold)
{
    const auto request = parsed<StreamRequest>({u"stream"_s});
    ASSERT_TRUE(request);
    EXPECT_EQ(request->debounce, 0);
}

TEST(CommandLine, SendTakesTheNumberOfACommand)
{
    const std::pair<QString, Command> numbers[] = {{u"0"_s, Command::play}, {u"1"_s, Command::pause},
        {u"4"_s, Command::next}, {u"5"_s, Command::previous}};
    for (const auto &[number, command] : numbers) {
        const auto request = parsed<SendRequest>({u"send"_s, number});
        ASSERT_TRUE(request);
        EXPECT_EQ(request->command, command);
        EXPECT_EQ(numberOfCommand(command), number.toInt());
    }
}

TEST(CommandLine, SeekTakesMicroseconds)
{
    const auto request = parsed<SeekRequest>({u"seek"_s, u"12500000"_s});
    ASSERT_TRUE(request);
    EXPECT_EQ(request->position, 12'500'000);
}

TEST(CommandLine, WhatMakesNoSenseIsRefused)
{
    const QStringList senseless[] = {{}, {u"play"_s}, {u"send"_s}, {u"send"_s, u"2"_s}, {u"send"_s, u"-1"_s},
        {u"send"_s, u"0"_s, u"1"_s}, {u"send"_s, u"4294967296"_s}, {u"send"_s, u" 0"_s}, {u"seek"_s, u"-1"_s},
        {u"seek"_s, u"1.5"_s}, {u"seek"_s, u""_s}, {u"seek"_s, u"99999999999999999999"_s},
        {u"stream"_s, u"80"_s}, {u"stream"_s, u"--debounce="_s}, {u"stream"_s, u"--debounce=-1"_s},
        {u"stream"_s, u"--debounce=60001"_s}, {u"stream"_s, u"--verbose"_s}};
    for (const QStringList &words : senseless)
        EXPECT_FALSE(parseCommandLine(words)) << words.join(u' ').toStdString();
}

} // namespace
} // namespace brindle::adapter
