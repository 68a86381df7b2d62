#include "platform/linux/scripts/LocalConnection.h"

#include <arpa/inet.h>
#include <array>
#include <cerrno>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>
#include <utility>

namespace brindle {

std::optional<LocalConnection> LocalConnection::open(quint16 port, const Deadline &deadline)
{
    const int socket = ::socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
    if (socket < 0)
        return std::nullopt;
    LocalConnection connection(socket, deadline);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    const auto *const generic = reinterpret_cast<const sockaddr *>(&address);
    if (::connect(socket, generic, sizeof address) == 0)
        return connection;
    int error = errno;
    socklen_t size = sizeof error;
    if (error != EINPROGRESS || !connection.waitFor(POLLOUT)
        || ::getsockopt(socket, SOL_SOCKET, SO_ERROR, &error, &size) != 0 || error != 0)
        return std::nullopt;
    return connection;
}

LocalConnection::LocalConnection(LocalConnection &&other) noexcept
    : m_socket(std::exchange(other.m_socket, -1))
    , m_deadline(other.m_deadline)
    , m_received(std::move(other.m_received))
{ }

LocalConnection::~LocalConnection()
{
    if (m_socket >= 0)
        ::close(m_socket);
}

bool LocalConnection::waitFor(short events) const
{
    pollfd waiting{.fd = m_socket, .events = events, .revents = 0};
    while (!m_deadline.hasPassed()) {
        const int ready = ::poll(&waiting, 1, m_deadline.milliseconds());
        if (ready > 0)
            return true;
        if (ready < 0 && errno != EINTR)
            return false;
    }
    return false;
}

bool LocalConnection::send(QByteArray bytes)
{
    while (!bytes.isEmpty()) {
        if (!waitFor(POLLOUT))
            return false;
        const auto sent = ::send(m_socket, bytes.constData(), size_t(bytes.size()), MSG_NOSIGNAL);
        if (sent > 0)
            bytes.remove(0, sent);
        else if (sent < 0 && errno != EAGAIN && errno != EINTR)
            return false;
    }
    return true;
}

bool LocalConnection::receive()
{
    std::array<char, 0x4000> chunk{};
    while (waitFor(POLLIN)) {
        const auto size = ::recv(m_socket, chunk.data(), chunk.size(), 0);
        if (size > 0) {
            m_received.append(chunk.data(), size);
            return true;
        }
        if (size == 0 || (errno != EAGAIN && errno != EINTR))
            return false;
    }
    return false;
}

std::optional<QByteArray> LocalConnection::read(qsizetype size)
{
    while (m_received.size() < size) {
        if (!receive())
            return std::nullopt;
    }
    QByteArray bytes = m_received.first(size);
    m_received.remove(0, size);
    return bytes;
}

std::optional<QByteArray> LocalConnection::readThrough(const QByteArray &end, qsizetype limit)
{
    for (;;) {
        const auto found = m_received.indexOf(end);
        if (found >= 0 && found + end.size() <= limit)
            return read(found + end.size());
        if (m_received.size() >= limit || !receive())
            return std::nullopt;
    }
}

} // namespace brindle
