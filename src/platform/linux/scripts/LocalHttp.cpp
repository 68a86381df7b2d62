#include "platform/linux/scripts/LocalHttp.h"

#include <QList>

namespace brindle::http {

namespace {

constexpr qsizetype longestHead = 0x4000;

bool isNumber(const QByteArray &text)
{
    return !text.isEmpty()
        && std::ranges::all_of(text, [](char digit) { return digit >= '0' && digit <= '9'; });
}

} // namespace

std::optional<Head> parseHead(const QByteArray &text)
{
    const QList<QByteArray> lines = text.split('\n');
    const QList<QByteArray> status = lines.constFirst().trimmed().split(' ');
    if (status.size() < 2 || status[0] != "HTTP/1.1" || status[1].size() != 3 || !isNumber(status[1]))
        return std::nullopt;
    Head head{status[1].toInt(), {}};
    for (const QByteArray &line : lines.mid(1)) {
        const auto colon = line.indexOf(':');
        if (colon > 0)
            head.fields.insert(line.first(colon).toLower(), line.mid(colon + 1).trimmed());
    }
    return head;
}

std::optional<Head> request(
    LocalConnection &connection, quint16 port, const QByteArray &path, const QByteArray &fields)
{
    const QByteArray text =
        "GET " + path + " HTTP/1.1\r\nHost: 127.0.0.1:" + QByteArray::number(port) + "\r\n" + fields + "\r\n";
    if (!connection.send(text))
        return std::nullopt;
    const auto head = connection.readThrough("\r\n\r\n", longestHead);
    return head ? parseHead(*head) : std::nullopt;
}

std::optional<QByteArray> get(quint16 port, const QByteArray &path, qsizetype limit, const Deadline &deadline)
{
    auto connection = LocalConnection::open(port, deadline);
    const auto head = connection ? request(*connection, port, path) : std::nullopt;
    if (!head || head->status != 200 || head->fields.contains("transfer-encoding"))
        return std::nullopt;
    const QByteArray length = head->fields.value("content-length");
    bool isInRange = false;
    const qsizetype size = length.toLongLong(&isInRange);
    if (!isNumber(length) || !isInRange || size > limit)
        return std::nullopt;
    return connection->read(size);
}

} // namespace brindle::http
