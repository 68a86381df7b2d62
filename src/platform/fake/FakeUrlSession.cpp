#include "platform/fake/FakeUrlSession.h"

#include <algorithm>
#include <utility>

namespace brindle {

Subscription FakeUrlSession::fetch(const QUrl &url, const Limits &limits, Completion completion)
{
    asked.append(url);
    const int fetch = ++m_lastFetch;
    const std::weak_ptr weak(m_fetches);
    auto entry = std::make_shared<Fetch>(Fetch{url, limits, std::move(completion), {}});
    entry->tooLate = m_scheduler.after(limits.duration, [weak, fetch] {
        if (const auto fetches = weak.lock())
            end(*fetches, fetch, std::nullopt);
    });
    m_fetches->insert(fetch, entry);
    if (!m_isHeld)
        answerLater(fetch);
    return Subscription([weak, fetch] {
        if (const auto fetches = weak.lock())
            fetches->remove(fetch);
    });
}

void FakeUrlSession::release()
{
    m_isHeld = false;
    QList<int> waiting = m_fetches->keys();
    std::sort(waiting.begin(), waiting.end());
    for (const int fetch : waiting)
        answerLater(fetch);
}

void FakeUrlSession::answerLater(int fetch)
{
    m_scheduler.post([this, fetch, weak = std::weak_ptr(m_fetches)] {
        const auto fetches = weak.lock();
        if (!fetches || m_isHeld || !fetches->contains(fetch))
            return;
        const std::shared_ptr<Fetch> wanted = fetches->value(fetch);
        const auto found = m_contents.constFind(wanted->url);
        const bool fits = found != m_contents.constEnd() && found->size() <= wanted->limits.size;
        end(*fetches, fetch, fits ? std::optional(*found) : std::nullopt);
    });
}

void FakeUrlSession::end(Fetches &fetches, int fetch, const std::optional<QByteArray> &content)
{
    if (const auto ended = fetches.take(fetch))
        ended->completion(content);
}

} // namespace brindle
