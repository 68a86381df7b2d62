#include "foundation/ThreadQueue.h"

#include <utility>

namespace brindle {

// Qt names the thread by its object's name; the system keeps 15 bytes of it, and the end of a reverse-DNS
// label says more than its start.
ThreadQueue::ThreadQueue(const QString &label) : m_thread(QThread::create([this] { run(); }))
{
    m_thread->setObjectName(label.right(15));
}

ThreadQueue::~ThreadQueue()
{
    std::deque<std::function<void()>> dropped;
    {
        const std::scoped_lock lock(m_mutex);
        m_isEnding = true;
        dropped.swap(m_waiting);
    }
    dropped.clear(); // outside the lock: what it holds may post
    m_posted.notify_all();
    m_thread->wait();
}

void ThreadQueue::post(std::function<void()> work)
{
    const std::scoped_lock lock(m_mutex);
    if (m_isEnding)
        return;
    m_waiting.push_back(std::move(work));
    if (m_thread->isRunning())
        m_posted.notify_one();
    else
        m_thread->start();
}

void ThreadQueue::run()
{
    std::unique_lock lock(m_mutex);
    while (true) {
        m_posted.wait(lock, [this] { return m_isEnding || !m_waiting.empty(); });
        if (m_isEnding)
            return;
        auto work = std::move(m_waiting.front());
        m_waiting.pop_front();
        lock.unlock();
        work();
        work = nullptr; // what it holds goes before anyone may see the queue idle
        lock.lock();
    }
}

} // namespace brindle
