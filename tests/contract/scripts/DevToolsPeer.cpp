#include "contract/scripts/DevToolsPeer.h"

#include <QCryptographicHash>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QtEndian>

namespace brindle::test {

namespace {

using namespace Qt::StringLiterals;

const QByteArray tabPath = "/devtools/page/TAB-";
const QByteArray tabRequest = "GET /devtools/page/TAB-";

QByteArray headerOf(const QByteArray &head, const QByteArray &name)
{
    for (const QByteArray &line : head.split('\n')) {
        if (line.toLower().startsWith(QByteArray(name + ':')))
            return line.mid(name.size() + 1).trimmed();
    }
    return {};
}

/// The text in a client's frame, which is masked; absent until all of it has come.
std::optional<QByteArray> unmasked(const QByteArray &bytes)
{
    if (bytes.size() < 4)
        return std::nullopt;
    qsizetype length = uchar(bytes[1]) & 0x7f;
    qsizetype start = 2;
    if (length == 126) {
        length = qFromBigEndian<quint16>(bytes.constData() + 2);
        start = 4;
    }
    constexpr qsizetype mask = 4;
    if (bytes.size() < start + mask + length)
        return std::nullopt;
    QByteArray text = bytes.sliced(start + mask, length);
    for (qsizetype i = 0; i < length; ++i)
        text[i] = char(text[i] ^ bytes[start + i % mask]);
    return text;
}

} // namespace

DevToolsPeer::DevToolsPeer()
{
    connect(&m_server, &QTcpServer::newConnection, this, &DevToolsPeer::accept);
    m_server.listen(QHostAddress::LocalHost);
}

QByteArray DevToolsPeer::frame(const QByteArray &text, char head)
{
    QByteArray bytes(1, head);
    if (text.size() < 126)
        return bytes + char(text.size()) + text;
    QByteArray length(2, '\0');
    qToBigEndian(quint16(text.size()), length.data());
    return bytes + char(126) + length + text;
}

QByteArray DevToolsPeer::evaluation(const QString &text)
{
    const QJsonObject value{{u"type"_s, u"string"_s}, {u"value"_s, text}};
    return QJsonDocument(QJsonObject{{u"id"_s, 1}, {u"result"_s, QJsonObject{{u"result"_s, value}}}})
        .toJson(QJsonDocument::Compact);
}

void DevToolsPeer::accept()
{
    while (QTcpSocket *socket = m_server.nextPendingConnection()) {
        ++m_connections;
        m_peers.insert(socket, {});
        connect(socket, &QTcpSocket::readyRead, this, [this, socket] { read(socket); });
        connect(socket, &QTcpSocket::disconnected, this, [this, socket] {
            m_peers.remove(socket);
            socket->deleteLater();
        });
    }
}

void DevToolsPeer::read(QTcpSocket *socket)
{
    const auto peer = m_peers.find(socket);
    if (peer == m_peers.end())
        return;
    peer->received += socket->readAll();
    if (peer->tab)
        answerEvaluation(socket, *peer);
    else
        answerHttp(socket, *peer);
}

void DevToolsPeer::answerHttp(QTcpSocket *socket, Peer &peer)
{
    const auto end = peer.received.indexOf("\r\n\r\n");
    if (end < 0)
        return;
    const QByteArray head = peer.received.first(end);
    peer.received.clear();
    if (head.startsWith(tabRequest)) {
        shakeHands(socket, peer, head);
        return;
    }
    const QByteArray body = targets();
    const QByteArray answer =
        list.value_or("HTTP/1.1 200 OK\r\nContent-Length:" + QByteArray::number(body.size())
            + "\r\nContent-Type:application/json; charset=UTF-8\r\n\r\n" + body);
    socket->write(answer);
    if (isEndless)
        connect(
            socket, &QTcpSocket::bytesWritten, this, [socket] { socket->write(QByteArray(0x4000, 'x')); });
}

QByteArray DevToolsPeer::targets() const
{
    QJsonArray targets;
    for (qsizetype i = 0; i < tabs.size(); ++i) {
        const QString usual =
            u"ws://127.0.0.1:%1"_s.arg(port()) + QString::fromLatin1(tabPath) + QString::number(i);
        targets.append(QJsonObject{{u"type"_s, tabs[i].type},
            {u"webSocketDebuggerUrl"_s, tabs[i].socketUrl.isEmpty() ? usual : tabs[i].socketUrl}});
    }
    return QJsonDocument(targets).toJson();
}

void DevToolsPeer::shakeHands(QTcpSocket *socket, Peer &peer, const QByteArray &head)
{
    const qsizetype number = head.mid(tabRequest.size()).split(' ').constFirst().toLongLong();
    m_asked.append(number);
    const Tab &tab = tabs[number];
    if (tab.hangsUp) {
        socket->abort();
        return;
    }
    const QByteArray proof = headerOf(head, "sec-websocket-key") + "258EAFA5-E914-47DA-95CA-C5AB0DC85B11";
    const QByteArray agreed = "HTTP/1.1 101 WebSocket Protocol Handshake\r\nUpgrade: WebSocket\r\n"
                              "Connection: Upgrade\r\nSec-WebSocket-Accept: "
        + QCryptographicHash::hash(proof, QCryptographicHash::Sha1).toBase64() + "\r\n\r\n";
    peer.tab = number;
    socket->write(tab.handshake.isEmpty() ? agreed : tab.handshake);
}

void DevToolsPeer::answerEvaluation(QTcpSocket *socket, Peer &peer)
{
    const auto request = unmasked(peer.received);
    if (!request)
        return;
    peer.received.clear();
    const QJsonObject call = QJsonDocument::fromJson(*request).object();
    m_expressions.append(call.value(u"params"_s).toObject().value(u"expression"_s).toString());
    const Tab &tab = tabs[*peer.tab];
    if (!tab.frames.isEmpty())
        socket->write(tab.frames);
    else if (!tab.answer.isEmpty())
        socket->write(frame(tab.answer));
    else if (tab.text)
        socket->write(frame(evaluation(*tab.text)));
}

} // namespace brindle::test
