#pragma once

#include "foundation/Subscription.h"

#include <functional>
#include <map>
#include <memory>
#include <utility>

namespace brindle {

/// Who wants to be told of something.
///
/// Listeners are called at once, in the order of their registration. While they are called, any may end its
/// own or another registration, add others, or be the end of the whole; one that has ended is not called any
/// more. A registration may outlive this. One thread.
template <typename... Args> class Listeners
{
public:
    using Listener = std::function<void(Args...)>;

    Listeners() = default;
    /// Calls `ended` after each end of a registration.
    explicit Listeners(std::function<void()> ended) { m_registry->ended = std::move(ended); }
    Listeners(const Listeners &) = delete;
    Listeners &operator=(const Listeners &) = delete;
    ~Listeners() { *m_registry = {}; }

    bool isEmpty() const { return m_registry->listeners.empty(); }

    [[nodiscard]] Subscription add(Listener listener)
    {
        const auto number = ++m_registry->lastNumber;
        m_registry->listeners.emplace(number, std::make_shared<Listener>(std::move(listener)));
        return Subscription{[weak = std::weak_ptr(m_registry), number] {
            const auto registry = weak.lock();
            if (!registry || !registry->listeners.erase(number))
                return;
            if (const auto ended = registry->ended)
                ended();
        }};
    }

    void call(Args... args) const
    {
        const auto registry = m_registry;
        const auto listeners = registry->listeners;
        for (const auto &[number, listener] : listeners) {
            if (registry->listeners.contains(number))
                (*listener)(args...);
        }
    }

private:
    struct Registry
    {
        std::map<unsigned long long, std::shared_ptr<Listener>> listeners;
        std::function<void()> ended;
        unsigned long long lastNumber = 0;
    };

    std::shared_ptr<Registry> m_registry = std::make_shared<Registry>();
};

} // namespace brindle
