#pragma once

#include "platform/EventMonitors.h"

#include <map>
#include <memory>

namespace brindle {

/// A pointer, buttons and keys that a test moves and presses.
class FakeEventMonitors : public EventMonitors
{
public:
    FakeEventMonitors();

    QPointF location;
    quint32 buttons = 0;
    /// Global monitors come back empty, as on a system that does not grant them.
    bool refusesGlobalMonitors = false;

    QPointF mouseLocation() const override { return location; }
    quint32 pressedMouseButtons() const override { return buttons; }
    [[nodiscard]] Subscription addGlobalMonitor(
        EventMask mask, std::function<void(const InputEvent &)> handler) override;
    [[nodiscard]] Subscription addLocalMonitor(
        EventMask mask, std::function<Disposition(const InputEvent &)> handler) override;

    /// Delivers an event as if it went to another program, or to this one.
    void sendGlobal(const InputEvent &event);
    Disposition sendLocal(const InputEvent &event);

    qsizetype globalMonitorCount() const;
    qsizetype localMonitorCount() const;

private:
    struct Monitor
    {
        EventMask mask;
        std::function<Disposition(const InputEvent &)> handler;
    };
    using Monitors = std::map<quint64, Monitor>;

    Subscription add(const std::shared_ptr<Monitors> &monitors, EventMask mask,
        std::function<Disposition(const InputEvent &)> handler);
    static Disposition send(const std::shared_ptr<Monitors> &monitors, const InputEvent &event);

    std::shared_ptr<Monitors> m_global;
    std::shared_ptr<Monitors> m_local;
    quint64 m_lastNumber = 0;
};

} // namespace brindle
