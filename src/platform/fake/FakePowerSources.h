#pragma once

#include "platform/PowerSources.h"

#include <memory>

namespace brindle {

/// Power supplies that a test plugs and unplugs.
class FakePowerSources : public PowerSources
{
public:
    using Sources = std::optional<QList<std::optional<QVariantMap>>>;

    /// Notification is refused, as by a system without it.
    bool refusesNotification = false;

    Sources sources() const override { return m_sources; }
    [[nodiscard]] Subscription notify(std::function<void()> changed) override;

    /// Replaces the sources and tells whoever wants to know.
    void set(const Sources &sources);
    /// A notification with nothing new behind it.
    void announce();
    bool isObserved() const { return m_changed && *m_changed; }

    /// The description of an internal battery with a maximum of 100.
    static QVariantMap battery(int capacity, bool onMains, bool isCharging = false, bool isCharged = false);

private:
    Sources m_sources;
    std::shared_ptr<std::function<void()>> m_changed = std::make_shared<std::function<void()>>();
};

} // namespace brindle
