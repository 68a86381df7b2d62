#pragma once

#include "foundation/Listeners.h"
#include "platform/DisplayBrightness.h"
#include "platform/InputMonitoring.h"
#include "platform/MediaKeys.h"

namespace brindle {

/// A display that a test dims.
class FakeDisplayBrightness : public DisplayBrightness
{
public:
    /// Notification is refused, as by a system without it.
    bool refusesNotification = false;
    /// How often the brightness was read.
    mutable int readings = 0;

    std::optional<double> brightness() const override
    {
        ++readings;
        return m_brightness;
    }
    [[nodiscard]] Subscription notify(std::function<void()> changed) override
    {
        return refusesNotification ? Subscription() : m_listeners.add(std::move(changed));
    }

    /// Replaces the brightness and tells whoever wants to know.
    void set(std::optional<double> brightness)
    {
        m_brightness = brightness;
        m_listeners.call();
    }
    bool isObserved() const { return !m_listeners.isEmpty(); }

private:
    std::optional<double> m_brightness;
    Listeners<> m_listeners;
};

/// Keys that a test presses.
class FakeMediaKeys : public MediaKeys
{
public:
    /// A monitor comes back empty, as where the system does not grant it.
    bool refusesMonitors = false;
    int monitorsMade = 0;

    [[nodiscard]] Subscription addGlobalMonitor(std::function<void(long data1)> handler) override
    {
        if (refusesMonitors)
            return {};
        ++monitorsMade;
        return m_monitors.add(std::move(handler));
    }

    void send(long data1) { m_monitors.call(data1); }
    void press(long keyCode)
    {
        send(mediaKeyData(keyCode, MediaKeyState::down));
        send(mediaKeyData(keyCode, MediaKeyState::up));
    }
    bool isObserved() const { return !m_monitors.isEmpty(); }

private:
    Listeners<long> m_monitors;
};

/// A permission that a test grants and withdraws.
class FakeInputMonitoring : public InputMonitoring
{
public:
    bool isGranted = false;
    /// How often the person was asked.
    int requests = 0;
    mutable int preflights = 0;

    bool preflightListenEventAccess() const override
    {
        ++preflights;
        return isGranted;
    }
    void requestListenEventAccess() override { ++requests; }
};

} // namespace brindle
