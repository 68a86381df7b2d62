#include "simulation/Shorten.h"

#include <algorithm>

namespace brindle::simulation {

namespace {

class Shortener
{
public:
    Shortener(Trail trail, const std::function<bool(const Trail &)> &fails, int limit)
        : m_trail(std::move(trail))
        , m_fails(fails)
        , m_left(limit)
    { }

    Trail run()
    {
        for (std::size_t chunk = std::max<std::size_t>(m_trail.size() / 2, 1); chunk > 0;) {
            if (!removeChunks(chunk))
                chunk /= 2;
        }
        simplify();
        return m_trail;
    }

private:
    bool accept(Trail candidate)
    {
        if (m_left-- <= 0 || !m_fails(candidate))
            return false;
        m_trail = std::move(candidate);
        return true;
    }

    bool removeChunks(std::size_t chunk)
    {
        bool isShorter = false;
        for (std::size_t from = 0; from < m_trail.size() && m_left > 0;) {
            const std::size_t to = std::min(from + chunk, m_trail.size());
            Trail candidate(m_trail.begin(), m_trail.begin() + std::ptrdiff_t(from));
            candidate.insert(candidate.end(), m_trail.begin() + std::ptrdiff_t(to), m_trail.end());
            if (accept(std::move(candidate)))
                isShorter = true;
            else
                from = to;
        }
        return isShorter && m_left > 0;
    }

    // Of what must stay: no pause and no unfinished turn that is not needed.
    void simplify()
    {
        for (std::size_t index = 0; index < m_trail.size(); ++index) {
            Trail candidate = m_trail;
            candidate[index].pause = 0;
            accept(std::move(candidate));
            candidate = m_trail;
            candidate[index].endsTurn = true;
            accept(std::move(candidate));
        }
    }

    Trail m_trail;
    const std::function<bool(const Trail &)> &m_fails;
    int m_left;
};

} // namespace

Trail shorten(Trail trail, const std::function<bool(const Trail &)> &fails, int limit)
{
    return Shortener{std::move(trail), fails, limit}.run();
}

} // namespace brindle::simulation
