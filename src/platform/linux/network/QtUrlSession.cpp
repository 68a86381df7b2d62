#include "platform/linux/network/QtUrlSession.h"

#include "foundation/Scheduler.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QNetworkAccessManager>
#include <QNetworkDiskCache>
#include <QNetworkReply>
#include <QPointer>

#include <utility>

namespace brindle {
namespace {

constexpr qint64 cacheSize = qint64(16) * 1024 * 1024;

/// One download: from the request to the whole content, a failure, or its being dropped.
class Download : public QObject
{
public:
    Download(QNetworkReply *reply, const UrlSession::Limits &limits, Scheduler &scheduler,
        UrlSession::Completion completion)
        : m_reply(reply)
        , m_size(limits.size)
        , m_completion(std::move(completion))
    {
        reply->setParent(this);
        connect(reply, &QNetworkReply::readyRead, this, [this] { read(); });
        connect(reply, &QNetworkReply::finished, this, [this] { finished(); });
        m_tooLate = scheduler.after(limits.duration, [this] { end(std::nullopt); });
    }

    /// From here on nobody is told. A reply must not be deleted while it speaks, so both go a little later.
    void leave()
    {
        m_completion = nullptr;
        m_tooLate.cancel();
        m_reply->disconnect(this);
        m_reply->abort();
        deleteLater();
    }

private:
    void read()
    {
        // One byte more than is allowed tells that there is too much; the rest need not come.
        m_content += m_reply->read(m_size + 1 - m_content.size());
        if (m_content.size() > m_size)
            end(std::nullopt);
    }
    void finished()
    {
        const bool isWhole = m_reply->error() == QNetworkReply::NoError;
        m_content += m_reply->read(m_size + 1 - m_content.size());
        end(isWhole && m_content.size() <= m_size ? std::optional(m_content) : std::nullopt);
    }
    void end(const std::optional<QByteArray> &content)
    {
        const auto completion = std::exchange(m_completion, nullptr);
        leave();
        if (completion)
            completion(content);
    }

    QNetworkReply *m_reply;
    qint64 m_size;
    UrlSession::Completion m_completion;
    QByteArray m_content;
    Delay m_tooLate;
};

/// Only ordinary files: a pipe or a device might keep its reader waiting forever.
std::optional<QByteArray> contentOf(const QString &path, qint64 limit)
{
    const QFileInfo info(path);
    if (!info.isFile() || info.size() > limit)
        return std::nullopt;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    QByteArray content = file.read(limit + 1);
    return content.size() <= limit ? std::optional(std::move(content)) : std::nullopt;
}

} // namespace

QtUrlSession::QtUrlSession(Scheduler &scheduler, QString cacheFolder)
    : m_scheduler(scheduler)
    , m_cacheFolder(std::move(cacheFolder))
{ }

QtUrlSession::~QtUrlSession() = default;

Subscription QtUrlSession::fetch(const QUrl &url, const Limits &limits, Completion completion)
{
    const QString scheme = url.scheme().toLower();
    if (scheme == u"http" || scheme == u"https" || scheme == u"data")
        return download(url, limits, std::move(completion));
    return answerLater(
        url.isLocalFile() ? contentOf(url.toLocalFile(), limits.size) : std::nullopt, std::move(completion));
}

Subscription QtUrlSession::download(const QUrl &url, const Limits &limits, Completion completion)
{
    QNetworkRequest request(url);
    request.setAttribute(QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::Manual);
    request.setAttribute(QNetworkRequest::CookieSaveControlAttribute, QNetworkRequest::Manual);
    const QPointer download =
        new Download(manager().get(request), limits, m_scheduler, std::move(completion));
    download->setParent(m_manager.get());
    return Subscription([download] {
        if (download)
            download->leave();
    });
}

Subscription QtUrlSession::answerLater(std::optional<QByteArray> content, Completion completion)
{
    const auto wanted = std::make_shared<bool>(true);
    m_scheduler.post(
        m_lifetime.guard([wanted, content = std::move(content), completion = std::move(completion)] {
            if (*wanted)
                completion(content);
        }));
    return Subscription([wanted] { *wanted = false; });
}

QNetworkAccessManager &QtUrlSession::manager()
{
    if (!m_manager) {
        m_manager = std::make_unique<QNetworkAccessManager>();
        auto *cache = new QNetworkDiskCache(m_manager.get());
        QDir().mkpath(m_cacheFolder);
        QFile::setPermissions(m_cacheFolder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        cache->setCacheDirectory(m_cacheFolder);
        cache->setMaximumCacheSize(cacheSize);
        m_manager->setCache(cache);
    }
    return *m_manager;
}

} // namespace brindle
