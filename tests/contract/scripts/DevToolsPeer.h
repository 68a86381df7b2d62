#pragma once

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QString>
#include <QTcpServer>
#include <QTcpSocket>

#include <optional>

namespace brindle::test {

/// A browser's debugging port under a test's script: it behaves, or does one of the things that another
/// program at that port might do.
class DevToolsPeer : public QObject
{
    Q_OBJECT

public:
    struct Tab
    {
        /// What the evaluation gives. Absent: the tab never answers.
        std::optional<QString> text = std::nullopt;
        QString type = QStringLiteral("page");
        /// The address of its socket instead of the right one.
        QString socketUrl = {};
        /// What it sends after the handshake instead of an answer, as bytes of the wire.
        QByteArray frames = {};
        /// The answer to the evaluation instead of the right one.
        QByteArray answer = {};
        /// What it answers to the handshake instead of agreeing.
        QByteArray handshake = {};
        /// It hangs up as soon as it is asked.
        bool hangsUp = false;
    };

    QList<Tab> tabs;
    /// What it answers when it is asked for the list, instead of the list.
    std::optional<QByteArray> list;
    /// Sends without end what it sends instead of the list.
    bool isEndless = false;

    DevToolsPeer();

    quint16 port() const { return m_server.serverPort(); }
    /// The tabs that were asked, and the expressions with which.
    const QList<qsizetype> &asked() const { return m_asked; }
    const QStringList &expressions() const { return m_expressions; }
    int connections() const { return m_connections; }

    /// A text as a server sends it, in one frame.
    static QByteArray frame(const QByteArray &text, char head = char(0x81));
    /// The answer to an evaluation.
    static QByteArray evaluation(const QString &text);

private:
    struct Peer
    {
        QByteArray received;
        std::optional<qsizetype> tab;
    };

    void accept();
    void read(QTcpSocket *socket);
    void answerHttp(QTcpSocket *socket, Peer &peer);
    void shakeHands(QTcpSocket *socket, Peer &peer, const QByteArray &head);
    void answerEvaluation(QTcpSocket *socket, Peer &peer);
    QByteArray targets() const;

    QHash<QTcpSocket *, Peer> m_peers;
    QList<qsizetype> m_asked;
    QStringList m_expressions;
    int m_connections = 0;
    /// Goes first, with the sockets that are its own.
    QTcpServer m_server;
};

} // namespace brindle::test
