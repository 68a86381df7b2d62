#pragma once

#include "platform/linux/scripts/Deadline.h"

#include <QByteArray>

#include <optional>

namespace brindle {

/// A TCP connection to a program on this very machine.
///
/// It may be any program, for a port is all that is known of it: whatever it does or leaves undone, each call
/// ends by the deadline and keeps no more than it was told to. Plain blocking calls, without an event loop;
/// any one thread.
class LocalConnection
{
public:
    /// To a port of the loopback interface; absent when nobody answers there in time.
    static std::optional<LocalConnection> open(quint16 port, const Deadline &deadline);
    LocalConnection(LocalConnection &&other) noexcept;
    LocalConnection &operator=(LocalConnection &&) = delete;
    ~LocalConnection();

    bool send(QByteArray bytes);
    /// Exactly so many bytes.
    std::optional<QByteArray> read(qsizetype size);
    /// All up to and with `end`, which must come within the first `limit` bytes.
    std::optional<QByteArray> readThrough(const QByteArray &end, qsizetype limit);

private:
    LocalConnection(int socket, const Deadline &deadline) : m_socket(socket), m_deadline(deadline) { }

    bool waitFor(short events) const;
    /// Waits until more has come, and takes it in; false when nothing more will.
    bool receive();

    int m_socket;
    Deadline m_deadline;
    /// What came and was not read yet.
    QByteArray m_received;
};

} // namespace brindle
