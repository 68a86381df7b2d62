#pragma once

#include "foundation/Lifetime.h"
#include "platform/UrlSession.h"

#include <QString>

#include <memory>

class QNetworkAccessManager;

namespace brindle {

class Scheduler;

/// Addresses by Qt's own network access, with a cache on disk. Nothing of it exists before the first fetch.
class QtUrlSession : public UrlSession
{
public:
    /// `cacheFolder` is made when needed, for the user alone.
    QtUrlSession(Scheduler &scheduler, QString cacheFolder);
    ~QtUrlSession() override;

    [[nodiscard]] Subscription fetch(const QUrl &url, const Limits &limits, Completion completion) override;

private:
    Subscription download(const QUrl &url, const Limits &limits, Completion completion);
    Subscription answerLater(std::optional<QByteArray> content, Completion completion);
    QNetworkAccessManager &manager();

    Scheduler &m_scheduler;
    QString m_cacheFolder;
    std::unique_ptr<QNetworkAccessManager> m_manager;
    Lifetime m_lifetime;
};

} // namespace brindle
