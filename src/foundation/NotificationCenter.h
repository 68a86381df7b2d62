#pragma once

#include "foundation/Listeners.h"

#include <QString>

#include <functional>
#include <map>

namespace brindle {

/// Named messages within the program, for parties that do not know each other. Main thread only; observers
/// are called at once, in the order of their registration. An observer may end its own or any other
/// registration while a message is delivered.
class NotificationCenter
{
public:
    [[nodiscard]] Subscription observe(const QString &name, std::function<void()> handler)
    {
        return m_observers[name].add(std::move(handler));
    }
    void post(const QString &name) { m_observers[name].call(); }

private:
    std::map<QString, Listeners<>> m_observers;
};

} // namespace brindle
