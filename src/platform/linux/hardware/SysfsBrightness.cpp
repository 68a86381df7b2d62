#include "platform/linux/hardware/SysfsBrightness.h"

#include "platform/linux/hardware/UdevMonitor.h"

#include <QFileSystemWatcher>

#include <utility>

namespace brindle {

/// Programs that set the brightness write the file; what keys do by themselves, udev tells.
struct SysfsBrightness::Watch
{
    explicit Watch(std::function<void()> devicesChanged) : devices("backlight", std::move(devicesChanged)) { }

    QFileSystemWatcher files;
    UdevMonitor devices;
};

SysfsBrightness::SysfsBrightness(Scheduler &scheduler, const QString &classFolder)
    : m_scheduler(scheduler)
    , m_classFolder(classFolder)
    , m_listeners([this] {
        if (m_listeners.isEmpty()) {
            m_watch.reset();
            m_announcement.cancel();
        }
    })
{ }

SysfsBrightness::~SysfsBrightness() = default;

std::optional<double> SysfsBrightness::brightness() const
{
    if (m_watch)
        return m_brightness;
    const auto device = usableBacklight(m_classFolder);
    return device ? device->level() : std::nullopt;
}

Subscription SysfsBrightness::notify(std::function<void()> changed)
{
    if (!m_watch)
        begin();
    return m_listeners.add(std::move(changed));
}

void SysfsBrightness::begin()
{
    m_watch = std::make_unique<Watch>([this] { findDevice(); });
    QObject::connect(&m_watch->files, &QFileSystemWatcher::fileChanged, &m_watch->files, [this] { read(); });
    QObject::connect(
        &m_watch->files, &QFileSystemWatcher::directoryChanged, &m_watch->files, [this] { findDevice(); });
    findDevice();
    m_announcement.cancel();
}

// The device that one went by may have changed its name, its place or its maximum.
void SysfsBrightness::findDevice()
{
    m_device = usableBacklight(m_classFolder);
    // What is watched already, or is not there, is no error.
    m_watch->files.addPath(m_classFolder);
    if (m_device)
        m_watch->files.addPath(m_device->levelFile());
    read();
}

void SysfsBrightness::read()
{
    const auto before = std::exchange(m_brightness, m_device ? m_device->level() : std::nullopt);
    if (m_brightness != before && !m_announcement.isPending())
        m_announcement = m_scheduler.after(0, [this] { m_listeners.call(); });
}

} // namespace brindle
