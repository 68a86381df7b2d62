#include "foundation/NotificationCenter.h"

#include <QHash>
#include <QList>

#include <map>

namespace brindle {

struct NotificationCenter::Registry
{
    using Handler = std::shared_ptr<std::function<void()>>;

    QHash<QString, std::map<quint64, Handler>> handlers;
    quint64 lastNumber = 0;
};

NotificationCenter::NotificationCenter() : m_registry(std::make_shared<Registry>()) { }

NotificationCenter::~NotificationCenter() = default;

Subscription NotificationCenter::observe(const QString &name, std::function<void()> handler)
{
    const quint64 number = ++m_registry->lastNumber;
    m_registry->handlers[name][number] = std::make_shared<std::function<void()>>(std::move(handler));
    return Subscription{[weak = std::weak_ptr(m_registry), name, number] {
        if (const auto registry = weak.lock())
            registry->handlers[name].erase(number);
    }};
}

void NotificationCenter::post(const QString &name)
{
    // A copy, because handlers may end registrations; one that ended meanwhile is not called.
    const auto registry = m_registry;
    const auto handlers = registry->handlers.value(name);
    for (const auto &[number, handler] : handlers) {
        if (registry->handlers[name].contains(number))
            (*handler)();
    }
}

} // namespace brindle
