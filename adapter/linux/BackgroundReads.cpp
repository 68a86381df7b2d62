#include "adapter/linux/BackgroundReads.h"

#include "foundation/Scheduler.h"

#include <mutex>
#include <thread>
#include <utility>

namespace brindle::adapter {

struct BackgroundReads::Shared
{
    std::mutex mutex;
    /// Null when the owner has gone.
    Scheduler *scheduler;
    int underWay = 0;
};

BackgroundReads::BackgroundReads(Scheduler &scheduler) : m_shared(std::make_shared<Shared>())
{
    m_shared->scheduler = &scheduler;
}

BackgroundReads::~BackgroundReads()
{
    const std::scoped_lock lock(m_shared->mutex);
    m_shared->scheduler = nullptr;
}

bool BackgroundReads::start(std::function<QByteArray()> read, std::function<void(QByteArray)> done)
{
    {
        const std::scoped_lock lock(m_shared->mutex);
        if (m_shared->underWay == most)
            return false;
        ++m_shared->underWay;
    }
    std::thread([shared = m_shared, read = std::move(read), done = std::move(done)]() mutable {
        QByteArray result = read();
        const std::scoped_lock lock(shared->mutex);
        --shared->underWay;
        if (shared->scheduler) {
            shared->scheduler->post([done = std::move(done), result = std::move(result)] { done(result); });
        }
    }).detach();
    return true;
}

} // namespace brindle::adapter
