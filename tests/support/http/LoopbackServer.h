#pragma once

#include <QHash>
#include <QList>
#include <QTcpServer>
#include <QUrl>

namespace brindle::test {

/// A web server on the loopback device that answers as it was told to, in this process's event loop.
class LoopbackServer
{
public:
    struct Answer
    {
        QByteArray body;
        QByteArray status = "200 OK";
        QList<QByteArray> headers = {};
        /// Whether the connection stays open without its last byte.
        bool hangs = false;
    };

    LoopbackServer();

    /// Of this path.
    QUrl url(const QString &path) const;
    void serve(const QString &path, const Answer &answer) { m_answers.insert(path, answer); }

    /// Whole requests, heads only, in order.
    QList<QByteArray> requests;
    /// How many connections the other side has given up or closed.
    int closed = 0;

private:
    void connected();
    void answer(QTcpSocket &socket, const QByteArray &request);

    QTcpServer m_server;
    QHash<QString, Answer> m_answers;
};

} // namespace brindle::test
