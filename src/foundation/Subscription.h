#pragma once

#include <functional>
#include <utility>

namespace brindle {

/// A registration that ends when it is dropped. Movable, not copyable; false when nothing is registered.
class Subscription
{
public:
    Subscription() = default;
    explicit Subscription(std::function<void()> end) : m_end(std::move(end)) { }
    Subscription(Subscription &&other) noexcept : m_end(std::exchange(other.m_end, nullptr)) { }
    Subscription &operator=(Subscription &&other) noexcept
    {
        if (this != &other) {
            reset();
            m_end = std::exchange(other.m_end, nullptr);
        }
        return *this;
    }
    ~Subscription() { reset(); }

    explicit operator bool() const { return bool(m_end); }
    void reset()
    {
        if (const auto end = std::exchange(m_end, nullptr))
            end();
    }

private:
    std::function<void()> m_end;
};

} // namespace brindle
