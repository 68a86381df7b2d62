#pragma once

#include "foundation/Scheduler.h"
#include "platform/UrlSession.h"

#include <QHash>
#include <QList>

#include <memory>

namespace brindle {

/// A network that holds what a test put there. It answers on the scheduler's next turn, or as late as the
/// test wants.
class FakeUrlSession : public UrlSession
{
public:
    explicit FakeUrlSession(Scheduler &scheduler) : m_scheduler(scheduler) { }

    [[nodiscard]] Subscription fetch(const QUrl &url, const Limits &limits, Completion completion) override;

    /// From now on there is something at this address.
    void serve(const QUrl &url, const QByteArray &content) { m_contents.insert(url, content); }
    /// From now on no answer arrives.
    void hold() { m_isHeld = true; }
    /// Lets everything arrive that was held up, and what follows.
    void release();

    /// Every address that was asked for, in order.
    QList<QUrl> asked;
    /// How many fetches are under way.
    qsizetype underWay() const { return qsizetype(m_fetches->size()); }

private:
    struct Fetch
    {
        QUrl url;
        Limits limits;
        Completion completion;
        Delay tooLate;
    };
    using Fetches = QHash<int, std::shared_ptr<Fetch>>;

    void answerLater(int fetch);
    static void end(Fetches &fetches, int fetch, const std::optional<QByteArray> &content);

    Scheduler &m_scheduler;
    QHash<QUrl, QByteArray> m_contents;
    bool m_isHeld = false;
    int m_lastFetch = 0;
    std::shared_ptr<Fetches> m_fetches = std::make_shared<Fetches>();
};

} // namespace brindle
