#pragma once

#include "platform/linux/scripts/LocalConnection.h"

namespace brindle {

/// Text messages over a web socket to a program on this machine.
///
/// A client of our own and not the library's, which needs an event loop and timers: this one is called where
/// there is neither, and must end in time whatever comes. Blocks; any one thread.
class WebSocketMessages
{
public:
    static std::optional<WebSocketMessages> open(
        quint16 port, const QByteArray &path, const Deadline &deadline);

    bool send(const QByteArray &message);
    /// The next message; absent when there is none in time, it is longer than `limit` bytes, or the other
    /// side does anything that it must not.
    std::optional<QByteArray> receive(qsizetype limit);

private:
    struct Frame
    {
        bool isLast = false;
        int kind = 0;
        QByteArray payload;
    };

    explicit WebSocketMessages(LocalConnection connection) : m_connection(std::move(connection)) { }

    std::optional<Frame> readFrame(qsizetype limit);

    LocalConnection m_connection;
};

} // namespace brindle
