#pragma once

#include <QByteArray>

#include <functional>
#include <memory>

namespace brindle {

class Scheduler;

namespace adapter {

/// Reading that may hang (a file on a disk that does not answer), on threads that nobody waits for.
///
/// Each reading has a thread of its own, so one that hangs holds up none of the others. Going does not wait:
/// what is still read then is thrown away. Main thread.
class BackgroundReads
{
public:
    /// How many may be under way at once; so many threads may be lost to a disk that hangs.
    static constexpr int most = 8;

    explicit BackgroundReads(Scheduler &scheduler);
    BackgroundReads(const BackgroundReads &) = delete;
    BackgroundReads &operator=(const BackgroundReads &) = delete;
    ~BackgroundReads();

    /// Runs `read` elsewhere, and then `done` on the main thread; false when too many are under way already.
    bool start(std::function<QByteArray()> read, std::function<void(QByteArray)> done);

private:
    struct Shared;

    std::shared_ptr<Shared> m_shared;
};

} // namespace adapter
} // namespace brindle
