#pragma once

#include "foundation/Listeners.h"
#include "foundation/Scheduler.h"
#include "platform/DisplayBrightness.h"
#include "platform/linux/hardware/Backlight.h"

#include <QString>

#include <memory>

namespace brindle {

/// The brightness of the built-in display, as the kernel's backlight class has it.
///
/// While somebody is registered the files are watched, and a reading opens none. A device that comes later is
/// found then too.
class SysfsBrightness : public DisplayBrightness
{
public:
    explicit SysfsBrightness(
        Scheduler &scheduler, const QString &classFolder = QStringLiteral("/sys/class/backlight"));
    ~SysfsBrightness() override;

    std::optional<double> brightness() const override;
    [[nodiscard]] Subscription notify(std::function<void()> changed) override;

    bool isWatching() const { return m_watch != nullptr; }

private:
    struct Watch;

    void begin();
    void findDevice();
    void read();

    Scheduler &m_scheduler;
    const QString m_classFolder;
    /// While somebody is registered.
    std::unique_ptr<Watch> m_watch;
    std::optional<Backlight> m_device;
    std::optional<double> m_brightness;
    Delay m_announcement;
    Listeners<> m_listeners;
};

} // namespace brindle
