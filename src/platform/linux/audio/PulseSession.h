#pragma once

#include "platform/AudioOutput.h"

#include <atomic>
#include <functional>
#include <memory>
#include <thread>

struct pa_mainloop;

namespace brindle {

/// One connection to the sound server, and what the server says of its default output, on a thread of its
/// own: finding the server, and a server that hangs, hold nobody up.
///
/// Begins to connect when it is made and ends when it goes, or with the server; a server that returns is
/// another session's. Starts no server.
class PulseSession
{
public:
    /// Called on the session's thread, and never after the session has gone.
    struct Listener
    {
        /// What the server says now, whenever that differs from what it said before. Absent: it has no
        /// output.
        std::function<void(std::optional<OutputLevel>)> said;
        /// There is no server, or it has gone. Called last, unless the session goes first.
        std::function<void()> ended;
    };

    explicit PulseSession(Listener listener);
    ~PulseSession();
    PulseSession(const PulseSession &) = delete;
    PulseSession &operator=(const PulseSession &) = delete;

private:
    void run();

    struct FreeLoop
    {
        void operator()(pa_mainloop *loop) const;
    };

    const Listener m_listener;
    /// What the thread waits in; freed when the thread has ended.
    std::unique_ptr<pa_mainloop, FreeLoop> m_loop;
    /// The same, as soon as it can be woken.
    std::atomic<pa_mainloop *> m_wakeable = nullptr;
    std::atomic<bool> m_isEnding = false;
    std::thread m_thread;
};

} // namespace brindle
