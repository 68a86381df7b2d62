#pragma once

#include "platform/linux/process/LinuxChild.h"

#include <QThread>

#include <cstdint>
#include <map>
#include <memory>
#include <mutex>

namespace brindle {

/// Waits for all running programs at once, on one thread, which sleeps while they are silent and starts with
/// the first of them. Nothing is done to the signals of this program: each child has a descriptor that tells
/// of its end.
class ChildWatcher
{
public:
    ChildWatcher();
    ChildWatcher(const ChildWatcher &) = delete;
    ChildWatcher &operator=(const ChildWatcher &) = delete;
    /// Waits for a handler that runs. The programs go on, and nothing more is told of them.
    ~ChildWatcher();

    /// Keeps `child` until it has ended. False, with nothing kept, when the kernel refuses. Any thread.
    bool watch(const std::shared_ptr<LinuxChild> &child);

private:
    using Source = LinuxChild::Source;
    /// What the kernel hands back with an event: a child and one of its descriptors.
    using Key = std::uint64_t;

    static Key key(Key child, Source source);
    bool add(int descriptor, Key key) const;
    void forget(const LinuxChild &child, Source source) const;
    std::shared_ptr<LinuxChild> find(Key child);
    void run();
    void handle(Key event);

    FileDescriptor m_events;
    FileDescriptor m_wakeUp;
    std::mutex m_mutex;
    std::map<Key, std::shared_ptr<LinuxChild>> m_children;
    Key m_lastChild = 0;
    std::unique_ptr<QThread> m_thread;
};

} // namespace brindle
