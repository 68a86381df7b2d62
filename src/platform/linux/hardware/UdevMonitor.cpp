#include "platform/linux/hardware/UdevMonitor.h"

#include <libudev.h>
#include <utility>

namespace brindle {

void UdevMonitor::Release::operator()(udev_monitor *monitor) const
{
    udev_monitor_unref(monitor);
}

UdevMonitor::UdevMonitor(const char *subsystem, std::function<void()> happened)
    : m_happened(std::move(happened))
{
    udev *context = udev_new();
    m_monitor.reset(udev_monitor_new_from_netlink(context, "udev"));
    udev_unref(context); // the monitor has its own share
    if (!m_monitor || udev_monitor_filter_add_match_subsystem_devtype(m_monitor.get(), subsystem, nullptr) < 0
        || udev_monitor_enable_receiving(m_monitor.get()) < 0)
        return;
    m_notifier =
        std::make_unique<QSocketNotifier>(udev_monitor_get_fd(m_monitor.get()), QSocketNotifier::Read);
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, m_notifier.get(), [this] { read(); });
}

void UdevMonitor::read()
{
    if (udev_device *device = udev_monitor_receive_device(m_monitor.get())) {
        udev_device_unref(device);
        m_happened();
    }
}

} // namespace brindle
