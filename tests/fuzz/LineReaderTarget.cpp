// Bytes in chunks of any sizes: the lines must be those that lie between the line feeds, whatever the chunks.

#include "fuzz/FuzzTarget.h"
#include "media/LineReader.h"

#include <QByteArrayList>

#include <algorithm>

using brindle::fuzz::require;

int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    // The first byte says how the rest is cut.
    if (size == 0)
        return 0;
    const QByteArrayView stream(data + 1, qsizetype(size) - 1);
    const auto chunkSize = [stride = data[0], turn = 0]() mutable {
        return qsizetype((++turn * stride) % 29);
    };

    brindle::LineReader reader;
    QByteArrayList lines;
    auto nextSize = chunkSize;
    for (QByteArrayView rest = stream; !rest.isEmpty();) {
        const qsizetype count = std::clamp<qsizetype>(nextSize(), 1, rest.size());
        reader.consume(rest.first(count),
            [&lines](const QByteArray &line) { lines.append(QByteArray(line.constData(), line.size())); });
        rest = rest.sliced(count);
    }

    QByteArrayList expected = stream.toByteArray().split('\n');
    expected.removeLast(); // no line feed has ended it
    expected.removeAll(QByteArray());
    require(lines == expected, "the lines are those between the line feeds");
    return 0;
}
