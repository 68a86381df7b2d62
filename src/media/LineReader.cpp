#include "media/LineReader.h"

#include <utility>

namespace brindle {

void LineReader::consume(QByteArrayView chunk, const LineHandler &handle)
{
    for (qsizetype end = chunk.indexOf('\n'); end >= 0; end = chunk.indexOf('\n')) {
        complete(chunk.first(end), handle);
        chunk = chunk.sliced(end + 1);
    }
    m_incomplete.append(chunk);
}

void LineReader::complete(QByteArrayView rest, const LineHandler &handle)
{
    if (m_incomplete.isEmpty()) {
        if (!rest.isEmpty())
            handle(QByteArray::fromRawData(rest.data(), rest.size()));
        return;
    }
    m_incomplete.append(rest);
    // Taken out, so that the room of a long line is given back after it.
    const QByteArray line = std::exchange(m_incomplete, {});
    handle(line);
}

} // namespace brindle
