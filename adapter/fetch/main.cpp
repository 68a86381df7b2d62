// Fetches one picture: the address comes on standard input, the picture goes to standard output in Base64.
// Ends with 0 when all of it is out, else with 1 and whatever was written is worth nothing.

#include "adapter/linux/Artwork.h"

#include <QCoreApplication>
#include <QFile>
#include <QNetworkAccessManager>
#include <QNetworkProxyFactory>
#include <QNetworkReply>

#include <cstdio>

namespace brindle::adapter {

namespace {

/// Milliseconds without a byte after which a server counts as dead. Whoever runs this ends it when all of it
/// takes too long.
constexpr int silence = 5000;
constexpr int mostRedirects = 5;
constexpr qsizetype longestAddress = qsizetype(64) * 1024;

QByteArray readAll(FILE *stream, qint64 most)
{
    QFile file;
    return file.open(stream, QIODevice::ReadOnly) ? file.read(most) : QByteArray();
}

bool writeAll(FILE *stream, const QByteArray &text)
{
    QFile file;
    return file.open(stream, QIODevice::WriteOnly) && file.write(text) == text.size() && file.flush();
}

QNetworkRequest requestFor(const QUrl &address)
{
    QNetworkRequest request(address);
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::NoLessSafeRedirectPolicy);
    request.setMaximumRedirectsAllowed(mostRedirects);
    request.setTransferTimeout(silence);
    // Nothing that players say gets at what the user's other programs may.
    request.setAttribute(QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::Manual);
    request.setAttribute(QNetworkRequest::AuthenticationReuseAttribute, QNetworkRequest::Manual);
    return request;
}

class Fetch
{
public:
    explicit Fetch(const QUrl &address) : m_reply(m_network.get(requestFor(address)))
    {
        QObject::connect(m_reply, &QNetworkReply::readyRead, m_reply, [this] { take(); });
        QObject::connect(m_reply, &QNetworkReply::finished, m_reply, [this] { finish(); });
    }

private:
    void take()
    {
        m_picture += m_reply->readAll();
        if (m_picture.size() > Artwork::largest)
            m_reply->abort();
    }

    void finish()
    {
        take();
        const int status = m_reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
        const bool isWhole = m_reply->error() == QNetworkReply::NoError && status == 200;
        QCoreApplication::exit(isWhole && writeAll(stdout, m_picture.toBase64()) ? 0 : 1);
    }

    QNetworkAccessManager m_network;
    QNetworkReply *m_reply;
    QByteArray m_picture;
};

} // namespace

} // namespace brindle::adapter

int main(int argc, char **argv)
{
    using namespace brindle::adapter;
    const QCoreApplication application(argc, argv);
    const QByteArray address = readAll(stdin, longestAddress);
    if (Artwork::kindOf(address) != Artwork::Kind::remote)
        return 1;
    QNetworkProxyFactory::setUseSystemConfiguration(true);
    const Fetch fetch(QUrl::fromEncoded(address));
    return QCoreApplication::exec();
}
