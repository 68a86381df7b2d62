#pragma once

#include "foundation/SerialQueue.h"

#include <QString>
#include <QThread>

#include <condition_variable>
#include <deque>
#include <memory>
#include <mutex>

namespace brindle {

/// A serial queue with a thread of its own, for work that blocks. The thread starts with the first piece.
///
/// Going waits for the piece that runs, so a piece must end by itself.
class ThreadQueue final : public SerialQueue
{
public:
    /// `label` is what the system shows as the thread's name, as far as it has room.
    explicit ThreadQueue(const QString &label);
    ThreadQueue(const ThreadQueue &) = delete;
    ThreadQueue &operator=(const ThreadQueue &) = delete;
    ~ThreadQueue() override;

    void post(std::function<void()> work) override;

private:
    void run();

    std::mutex m_mutex;
    std::condition_variable m_posted;
    std::deque<std::function<void()>> m_waiting;
    bool m_isEnding = false;
    std::unique_ptr<QThread> m_thread;
};

} // namespace brindle
