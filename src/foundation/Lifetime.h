#pragma once

#include <memory>
#include <utility>

namespace brindle {

/// Lets work that outlives its owner find that out: `guard(f)` gives a function that calls `f` as long as the
/// `Lifetime` stands and does nothing afterwards. Declare it as the last field, so that it goes first.
///
/// A guarded function may be made and copied on any thread; it is called on the owner's.
class Lifetime
{
public:
    template <typename F> auto guard(F work) const
    {
        return [weak = std::weak_ptr<char>(m_token), work = std::move(work)](auto &&...args) mutable {
            if (weak.lock())
                work(std::forward<decltype(args)>(args)...);
        };
    }

private:
    std::shared_ptr<char> m_token = std::make_shared<char>();
};

} // namespace brindle
