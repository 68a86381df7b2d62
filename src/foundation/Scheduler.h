#pragma once

#include "foundation/Date.h"

#include <functional>
#include <memory>

namespace brindle {

/// Work that waits for its time. Owning and movable: dropping or overwriting it cancels the work.
///
/// A delay that has fired, or was cancelled, stays a finished handle and may be cancelled again.
class Delay
{
public:
    /// What a scheduler keeps of a delay. Cancelling twice, or after firing, does nothing.
    class Handle
    {
    public:
        virtual ~Handle() = default;
        virtual void cancel() = 0;
        virtual bool isPending() const = 0;
    };

    Delay() = default;
    explicit Delay(std::unique_ptr<Handle> handle) : m_handle(std::move(handle)) { }
    Delay(Delay &&) noexcept = default;
    Delay &operator=(Delay &&other) noexcept
    {
        if (this != &other) {
            cancel();
            m_handle = std::move(other.m_handle);
        }
        return *this;
    }
    ~Delay() { cancel(); }

    void cancel()
    {
        if (m_handle)
            m_handle->cancel();
    }
    bool isPending() const { return m_handle && m_handle->isPending(); }

private:
    std::unique_ptr<Handle> m_handle;
};

/// Time, for the whole program: the only source of the clock and of delayed work.
///
/// The clock may be read, and work posted, on any thread; all other calls are for the main one, and all work
/// runs there, each piece to completion before the next. Work that falls due together runs in the order of
/// its deadlines, then of its making. A delay may drop or replace its own handle while it runs.
class Scheduler
{
public:
    virtual ~Scheduler() = default;

    /// Wall time. May jump in either direction when the machine's clock is set; delays do not follow it.
    virtual Date now() const = 0;
    /// Seconds on a clock that never jumps back. Its zero means nothing.
    virtual double uptime() const = 0;

    /// Runs `work` once, `seconds` from now (0 and below: on a later turn, never at once).
    [[nodiscard]] virtual Delay after(double seconds, std::function<void()> work) = 0;
    /// Runs `work` each `seconds` (above 0), first after one interval. Up to `tolerance` seconds late is
    /// welcome, so that wake-ups can be shared. An interval that was missed (suspend) is not made up for.
    [[nodiscard]] virtual Delay every(double seconds, double tolerance, std::function<void()> work) = 0;
    /// Runs `work` on the main thread on its next turn, in the order of posting. From any thread.
    virtual void post(std::function<void()> work) = 0;
};

} // namespace brindle
