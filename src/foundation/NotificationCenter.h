#pragma once

#include "foundation/Subscription.h"

#include <QString>

#include <functional>
#include <memory>

namespace brindle {

/// Named messages within the program, for parties that do not know each other. Main thread only; observers
/// are called at once, in the order of their registration. An observer may end its own or any other
/// registration while a message is delivered.
class NotificationCenter
{
public:
    NotificationCenter();
    ~NotificationCenter();

    [[nodiscard]] Subscription observe(const QString &name, std::function<void()> handler);
    void post(const QString &name);

private:
    struct Registry;
    std::shared_ptr<Registry> m_registry;
};

} // namespace brindle
