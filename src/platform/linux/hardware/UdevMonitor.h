#pragma once

#include <QSocketNotifier>

#include <functional>
#include <memory>

struct udev_monitor;

namespace brindle {

/// Hears of devices of one kind that come, go or change, as udev tells it. Silent where there is no udev.
/// Main thread.
class UdevMonitor
{
public:
    /// `happened` is called for each event, on the main thread.
    UdevMonitor(const char *subsystem, std::function<void()> happened);

private:
    struct Release
    {
        void operator()(udev_monitor *monitor) const;
    };

    void read();

    const std::function<void()> m_happened;
    std::unique_ptr<udev_monitor, Release> m_monitor;
    std::unique_ptr<QSocketNotifier> m_notifier;
};

} // namespace brindle
