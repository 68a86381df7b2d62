#include "media/LineReader.h"

#include <QByteArrayList>

#include <gmock/gmock.h>

namespace brindle {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class LineReaderTest : public testing::Test
{
protected:
    /// The lines that `chunk` completes.
    QByteArrayList read(QByteArrayView chunk)
    {
        QByteArrayList lines;
        reader.consume(chunk,
            [&lines](const QByteArray &line) { lines.append(QByteArray(line.constData(), line.size())); });
        return lines;
    }

    LineReader reader;
};

TEST_F(LineReaderTest, ALineComesWhenItsLineFeedDoes)
{
    EXPECT_THAT(read("one li"), IsEmpty());
    EXPECT_THAT(read("ne"), IsEmpty());
    EXPECT_THAT(read("\n"), ElementsAre("one line"));
}

TEST_F(LineReaderTest, OneChunkMayHoldSeveralLines)
{
    EXPECT_THAT(read("a\nb\nc\n"), ElementsAre("a", "b", "c"));
}

TEST_F(LineReaderTest, AChunkMayEndOneLineAndBeginAnother)
{
    EXPECT_THAT(read("fir"), IsEmpty());
    EXPECT_THAT(read("st\nsecond\nthi"), ElementsAre("first", "second"));
    EXPECT_THAT(read("rd\n"), ElementsAre("third"));
}

TEST_F(LineReaderTest, EmptyLinesAreSkipped)
{
    EXPECT_THAT(read("\n\na\n\n\nb\n"), ElementsAre("a", "b"));
    EXPECT_THAT(read("c"), IsEmpty());
    EXPECT_THAT(read("\n\n"), ElementsAre("c"));
    EXPECT_THAT(read(""), IsEmpty());
}

TEST_F(LineReaderTest, AnyByteButTheLineFeedBelongsToTheLine)
{
    EXPECT_THAT(read(QByteArray("a\0b\r\xff\n", 6)), ElementsAre(QByteArray("a\0b\r\xff", 5)));
}

TEST_F(LineReaderTest, ALineOfTwentyMegabytesArrivesWhole)
{
    const QByteArray chunk(0x10000, 'x');
    for (int i = 0; i < 320; ++i)
        ASSERT_THAT(read(chunk), IsEmpty());
    const QByteArrayList lines = read("\nnext\n");
    ASSERT_EQ(lines.size(), 2);
    EXPECT_EQ(lines.first(), QByteArray(320 * chunk.size(), 'x'));
    EXPECT_EQ(lines.last(), "next");
}

} // namespace
} // namespace brindle
