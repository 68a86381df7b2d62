#include "foundation/DeadlineQueue.h"

#include <algorithm>
#include <map>
#include <utility>

namespace brindle {

namespace {

using Key = std::pair<double, quint64>;

struct Entry
{
    double interval = 0;
    double tolerance = 0;
    std::function<void()> work;
    /// Where the entry waits; none while it is finished or being run for the last time.
    std::optional<Key> key;
};

} // namespace

struct DeadlineQueue::Entries
{
    std::map<Key, std::shared_ptr<Entry>> waiting;
    quint64 lastNumber = 0;

    void insert(const std::shared_ptr<Entry> &entry, double deadline)
    {
        entry->key = Key{deadline, ++lastNumber};
        waiting.emplace(*entry->key, entry);
    }

    void remove(Entry &entry)
    {
        if (const auto key = std::exchange(entry.key, std::nullopt))
            waiting.erase(*key);
    }
};

namespace {

class QueuedDelay : public Delay::Handle
{
public:
    QueuedDelay(std::weak_ptr<DeadlineQueue::Entries> entries, std::weak_ptr<Entry> entry)
        : m_entries(std::move(entries))
        , m_entry(std::move(entry))
    { }

    void cancel() override
    {
        const auto entry = m_entry.lock();
        const auto entries = m_entries.lock();
        if (entry && entries)
            entries->remove(*entry);
    }

    bool isPending() const override
    {
        const auto entry = m_entry.lock();
        return entry && entry->key;
    }

private:
    std::weak_ptr<DeadlineQueue::Entries> m_entries;
    std::weak_ptr<Entry> m_entry;
};

} // namespace

DeadlineQueue::DeadlineQueue() : m_entries(std::make_shared<Entries>()) { }

DeadlineQueue::~DeadlineQueue() = default;

Delay DeadlineQueue::add(double deadline, double interval, double tolerance, std::function<void()> work)
{
    const auto entry = std::make_shared<Entry>(Entry{interval, tolerance, std::move(work), std::nullopt});
    m_entries->insert(entry, deadline);
    return Delay{std::make_unique<QueuedDelay>(m_entries, entry)};
}

std::optional<double> DeadlineQueue::nearestDeadline() const
{
    if (m_entries->waiting.empty())
        return std::nullopt;
    return m_entries->waiting.begin()->first.first;
}

std::optional<double> DeadlineQueue::latestWakeUp() const
{
    std::optional<double> latest;
    for (const auto &[key, entry] : m_entries->waiting) {
        // Entries are in the order of deadlines, so the rest cannot be more urgent.
        if (latest && key.first > *latest)
            break;
        latest = std::min(latest.value_or(key.first + entry->tolerance), key.first + entry->tolerance);
    }
    return latest;
}

qsizetype DeadlineQueue::size() const
{
    return qsizetype(m_entries->waiting.size());
}

std::function<void()> DeadlineQueue::takeDue(double now)
{
    const auto first = m_entries->waiting.begin();
    if (first == m_entries->waiting.end() || first->first.first > now)
        return {};
    const std::shared_ptr<Entry> entry = first->second;
    const double deadline = first->first.first;
    m_entries->remove(*entry);
    if (entry->interval <= 0)
        return std::move(entry->work);
    const double next = deadline + entry->interval;
    m_entries->insert(entry, next > now ? next : now + entry->interval);
    return entry->work;
}

} // namespace brindle
