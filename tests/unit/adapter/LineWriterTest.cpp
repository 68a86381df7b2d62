#include "adapter/linux/LineWriter.h"

#include "support/EventLoop.h"

#include <QSignalSpy>

#include <array>
#include <csignal>
#include <fcntl.h>
#include <gmock/gmock.h>
#include <unistd.h>
#include <utility>

namespace brindle::adapter {
namespace {

using test::eventually;

/// A writer into a pipe, and the other end of it.
class LineWriterTest : public testing::Test
{
protected:
    LineWriterTest()
    {
        std::signal(SIGPIPE, SIG_IGN);
        EXPECT_EQ(::pipe2(m_pipe.data(), O_CLOEXEC), 0);
        ::fcntl(m_pipe[0], F_SETFL, O_NONBLOCK);
        writer.emplace(m_pipe[1]);
    }
    ~LineWriterTest() override
    {
        writer.reset();
        stopReading();
        ::close(m_pipe[1]);
    }

    /// What lies in the pipe.
    QByteArray read() const
    {
        QByteArray all;
        std::array<char, 65536> chunk{};
        for (ssize_t count = 0; (count = ::read(m_pipe[0], chunk.data(), chunk.size())) > 0;)
            all.append(chunk.data(), count);
        return all;
    }
    void stopReading()
    {
        if (m_pipe[0] >= 0)
            ::close(std::exchange(m_pipe[0], -1));
    }

    std::optional<LineWriter> writer;

private:
    std::array<int, 2> m_pipe{-1, -1};
};

/// More than any pipe holds.
const QByteArray large(20'000'000, 'x');

TEST_F(LineWriterTest, ALineGoesOutPartByPart)
{
    EXPECT_TRUE(writer->write({"one ", "two ", "three\n"}));
    EXPECT_EQ(read(), "one two three\n");
}

TEST_F(LineWriterTest, ALineLargerThanThePipeGoesOutAsItIsRead)
{
    EXPECT_TRUE(writer->write({"{", large, "}\n"}));
    QByteArray all;
    EXPECT_TRUE(eventually([&] {
        all += read();
        return all.endsWith('\n');
    }));
    EXPECT_EQ(all, "{" + large + "}\n");
}

TEST_F(LineWriterTest, WhileALineGoesOutAnotherIsRefusedWhole)
{
    EXPECT_TRUE(writer->write({large, "\n"}));
    EXPECT_FALSE(writer->write({"second\n"}));
    QByteArray all;
    eventually([&] {
        all += read();
        return all.endsWith('\n');
    });
    EXPECT_FALSE(all.contains("second"));
}

TEST_F(LineWriterTest, AfterARefusalItTellsWhenItIsFree)
{
    QSignalSpy free(&*writer, &LineWriter::free);
    writer->write({large, "\n"});
    writer->write({"second\n"});
    EXPECT_TRUE(eventually([&] {
        read();
        return free.size() == 1;
    }));
    EXPECT_TRUE(writer->write({"third\n"}));
    EXPECT_EQ(read().right(6), "third\n");
}

TEST_F(LineWriterTest, WithoutARefusalItDoesNotSayThatItIsFree)
{
    QSignalSpy free(&*writer, &LineWriter::free);
    writer->write({large, "\n"});
    QByteArray all;
    eventually([&] {
        all += read();
        return all.endsWith('\n');
    });
    test::deliverEvents();
    EXPECT_TRUE(free.isEmpty());
}

TEST_F(LineWriterTest, AFullPipeRefusesALineAsAWhole)
{
    const QByteArray filler(4096, 'f');
    while (writer->write({filler})) { }
    QSignalSpy free(&*writer, &LineWriter::free);
    // One that has begun to go out is gone on with.
    read();
    EXPECT_TRUE(eventually([&] { return !free.isEmpty(); }));
    read();
    EXPECT_TRUE(writer->write({"after\n"}));
    EXPECT_EQ(read(), "after\n");
}

TEST_F(LineWriterTest, AReaderThatGoesIsMissedEvenIfNothingIsWritten)
{
    QSignalSpy gone(&*writer, &LineWriter::readerGone);
    test::deliverEvents();
    EXPECT_TRUE(gone.isEmpty());
    stopReading();
    EXPECT_TRUE(eventually([&] { return !gone.isEmpty(); }));
}

TEST_F(LineWriterTest, AReaderThatGoesInTheMiddleOfALineIsMissed)
{
    writer->write({large, "\n"});
    QSignalSpy gone(&*writer, &LineWriter::readerGone);
    stopReading();
    EXPECT_TRUE(eventually([&] { return !gone.isEmpty(); }));
}

} // namespace
} // namespace brindle::adapter
