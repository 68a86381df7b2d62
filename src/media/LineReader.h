#pragma once

#include <QByteArray>
#include <QByteArrayView>

#include <functional>

namespace brindle {

/// Cuts a stream of bytes, which arrives in chunks of any size, into lines at its line feeds.
///
/// A line may be of any length: each byte is looked at once, and copied only where a line spans chunks.
class LineReader
{
public:
    using LineHandler = std::function<void(const QByteArray &line)>;

    /// Calls `handle` with each line that `chunk` completes, in order, without its line feed; empty lines are
    /// skipped. A line's bytes are valid during the call only.
    void consume(QByteArrayView chunk, const LineHandler &handle);

private:
    void complete(QByteArrayView rest, const LineHandler &handle);

    /// The start of a line whose end has not come yet.
    QByteArray m_incomplete;
};

} // namespace brindle
