#include "platform/linux/scripts/WebSocketMessages.h"

#include "platform/linux/scripts/LocalHttp.h"

#include <QCryptographicHash>
#include <QRandomGenerator>
#include <QtEndian>

namespace brindle {

namespace {

// The parts of a frame, as RFC 6455 numbers them.
enum Kind { continuation = 0x0, text = 0x1, ping = 0x9, pong = 0xa };

constexpr uchar lastFrame = 0x80;
constexpr uchar reservedBits = 0x70;
constexpr uchar kindBits = 0x0f;
constexpr uchar masked = 0x80;
constexpr uchar lengthBits = 0x7f;
constexpr uchar lengthIn16Bits = 126;
constexpr uchar lengthIn64Bits = 127;

template <typename Integer> QByteArray bigEndian(Integer value)
{
    QByteArray bytes(sizeof value, Qt::Uninitialized);
    qToBigEndian(value, bytes.data());
    return bytes;
}

QByteArray frameHead(qsizetype length)
{
    QByteArray head(1, char(lastFrame | text));
    if (length < lengthIn16Bits)
        head += char(masked | length);
    else if (length <= 0xffff)
        head += char(masked | lengthIn16Bits) + bigEndian(quint16(length));
    else
        head += char(masked | lengthIn64Bits) + bigEndian(quint64(length));
    return head;
}

/// What proves that the other side has understood: it must give this back for the key.
QByteArray acceptanceOf(const QByteArray &key)
{
    const QByteArray joined = key + "258EAFA5-E914-47DA-95CA-C5AB0DC85B11";
    return QCryptographicHash::hash(joined, QCryptographicHash::Sha1).toBase64();
}

QByteArray freshKey()
{
    auto &random = *QRandomGenerator::system();
    const QByteArray bytes = bigEndian(random.generate64()) + bigEndian(random.generate64());
    return bytes.toBase64();
}

} // namespace

std::optional<WebSocketMessages> WebSocketMessages::open(
    quint16 port, const QByteArray &path, const Deadline &deadline)
{
    auto connection = LocalConnection::open(port, deadline);
    if (!connection)
        return std::nullopt;
    const QByteArray key = freshKey();
    const auto head = http::request(*connection, port, path,
        "Connection: Upgrade\r\nUpgrade: websocket\r\nSec-WebSocket-Version: 13\r\nSec-WebSocket-Key: " + key
            + "\r\n");
    if (!head || head->status != 101 || head->fields.value("sec-websocket-accept") != acceptanceOf(key))
        return std::nullopt;
    return WebSocketMessages(std::move(*connection));
}

bool WebSocketMessages::send(const QByteArray &message)
{
    const QByteArray mask = bigEndian(QRandomGenerator::system()->generate());
    QByteArray payload = message;
    for (qsizetype i = 0; i < payload.size(); ++i)
        payload[i] = char(payload[i] ^ mask[i % mask.size()]);
    return m_connection.send(frameHead(payload.size()) + mask + payload);
}

std::optional<QByteArray> WebSocketMessages::receive(qsizetype limit)
{
    QByteArray message;
    bool hasBegun = false;
    for (;;) {
        const auto frame = readFrame(limit - message.size());
        if (!frame)
            return std::nullopt;
        if (frame->kind == ping || frame->kind == pong)
            continue; // a conversation this short needs no sign of life
        if (frame->kind != (hasBegun ? continuation : text))
            return std::nullopt;
        hasBegun = true;
        message += frame->payload;
        if (frame->isLast)
            return message;
    }
}

std::optional<WebSocketMessages::Frame> WebSocketMessages::readFrame(qsizetype limit)
{
    const auto head = m_connection.read(2);
    if (!head)
        return std::nullopt;
    const auto first = uchar(head->at(0));
    const auto second = uchar(head->at(1));
    // A server sends nothing masked, and no extension was agreed upon.
    if ((first & reservedBits) || (second & masked))
        return std::nullopt;
    quint64 length = second & lengthBits;
    if (length >= lengthIn16Bits) {
        const auto longer = m_connection.read(length == lengthIn16Bits ? sizeof(quint16) : sizeof(quint64));
        if (!longer)
            return std::nullopt;
        length = length == lengthIn16Bits ? qFromBigEndian<quint16>(longer->constData())
                                          : qFromBigEndian<quint64>(longer->constData());
    }
    if (length > quint64(limit))
        return std::nullopt;
    const auto payload = m_connection.read(qsizetype(length));
    if (!payload)
        return std::nullopt;
    return Frame{(first & lastFrame) != 0, first & kindBits, *payload};
}

} // namespace brindle
