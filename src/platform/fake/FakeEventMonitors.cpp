#include "platform/fake/FakeEventMonitors.h"

namespace brindle {

FakeEventMonitors::FakeEventMonitors()
    : m_global(std::make_shared<Monitors>())
    , m_local(std::make_shared<Monitors>())
{ }

Subscription FakeEventMonitors::addGlobalMonitor(
    EventMask mask, std::function<void(const InputEvent &)> handler)
{
    if (refusesGlobalMonitors)
        return {};
    return add(m_global, mask, [handler = std::move(handler)](const InputEvent &event) {
        handler(event);
        return Disposition::pass;
    });
}

Subscription FakeEventMonitors::addLocalMonitor(
    EventMask mask, std::function<Disposition(const InputEvent &)> handler)
{
    return add(m_local, mask, std::move(handler));
}

void FakeEventMonitors::sendGlobal(const InputEvent &event)
{
    send(m_global, event);
}

EventMonitors::Disposition FakeEventMonitors::sendLocal(const InputEvent &event)
{
    return send(m_local, event);
}

qsizetype FakeEventMonitors::globalMonitorCount() const
{
    return qsizetype(m_global->size());
}

qsizetype FakeEventMonitors::localMonitorCount() const
{
    return qsizetype(m_local->size());
}

Subscription FakeEventMonitors::add(const std::shared_ptr<Monitors> &monitors, EventMask mask,
    std::function<Disposition(const InputEvent &)> handler)
{
    const quint64 number = ++m_lastNumber;
    monitors->emplace(number, Monitor{mask, std::move(handler)});
    return Subscription{[weak = std::weak_ptr(monitors), number] {
        if (const auto alive = weak.lock())
            alive->erase(number);
    }};
}

EventMonitors::Disposition FakeEventMonitors::send(
    const std::shared_ptr<Monitors> &monitors, const InputEvent &event)
{
    // A copy: handlers may add and end monitors. One that was ended meanwhile is not called any more.
    for (const auto &[number, monitor] : Monitors(*monitors)) {
        if (monitors->contains(number) && (monitor.mask & eventMask(event.kind))
            && monitor.handler(event) == Disposition::swallow)
            return Disposition::swallow;
    }
    return Disposition::pass;
}

} // namespace brindle
