#include "support/http/LoopbackServer.h"

#include <QTcpSocket>

#include <memory>
#include <utility>

namespace brindle::test {

LoopbackServer::LoopbackServer()
{
    QObject::connect(&m_server, &QTcpServer::newConnection, &m_server, [this] { connected(); });
    m_server.listen(QHostAddress::LocalHost);
}

QUrl LoopbackServer::url(const QString &path) const
{
    return QUrl(QStringLiteral("http://127.0.0.1:%1%2").arg(m_server.serverPort()).arg(path));
}

void LoopbackServer::connected()
{
    QTcpSocket *socket = m_server.nextPendingConnection();
    const auto head = std::make_shared<QByteArray>();
    QObject::connect(socket, &QTcpSocket::readyRead, &m_server, [this, socket, head] {
        *head += socket->readAll();
        if (head->contains("\r\n\r\n"))
            answer(*socket, std::exchange(*head, {}));
    });
    QObject::connect(socket, &QTcpSocket::disconnected, &m_server, [this, socket] {
        ++closed;
        socket->deleteLater();
    });
}

void LoopbackServer::answer(QTcpSocket &socket, const QByteArray &request)
{
    requests.append(request);
    const QString path = QString::fromLatin1(request.split(' ').value(1));
    const Answer answer = m_answers.value(path, {"not here", "404 Not Found"});
    const qsizetype length = answer.body.size() + (answer.hangs ? 1 : 0);
    socket.write("HTTP/1.1 " + answer.status + "\r\nContent-Length: " + QByteArray::number(length) + "\r\n");
    for (const QByteArray &header : answer.headers)
        socket.write(header + "\r\n");
    socket.write("\r\n" + answer.body);
}

} // namespace brindle::test
