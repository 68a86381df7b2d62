#pragma once

#include <QString>

#include <cstdint>
#include <functional>
#include <optional>
#include <random>
#include <span>
#include <string>
#include <vector>

/// Random days: lists of events drawn from a seed, which are played against something that must hold. A list
/// that fails is shortened to what it fails by. `Act` says what can happen, and is each test's own.
namespace brindle::trails {

/// One event. It holds all chance that it needs, so that any trail of events plays the same each time, also
/// after others were taken out of it. What an event cannot do in the state that it meets, it leaves.
template <typename Act> struct Event
{
    Act act{};
    /// Which of the ways of the act; each act takes it modulo what it has.
    unsigned choice = 0;
    /// 0 to 1 each; places and amounts.
    double x = 0;
    double y = 0;
    /// Whether what was posted runs before the next event.
    bool endsTurn = true;
    /// Seconds that pass afterwards.
    double pause = 0;
};

template <typename Act> using Trail = std::vector<Event<Act>>;

template <typename Act> struct Habit
{
    Act act;
    /// How often it happens, against the sum of all.
    unsigned weight;
    const char *name;
};

struct Failure
{
    /// The event after which it was seen, counted from 0.
    std::size_t index;
    QString complaint;
};

// The library's distributions differ between its makers; a trail must not.
class Chance
{
public:
    explicit Chance(std::uint64_t seed) : m_engine(seed) { }

    double fraction() { return double(m_engine() >> 11) * 0x1p-53; }
    unsigned below(unsigned count) { return unsigned(m_engine() % count); }
    /// Mostly a moment, often none, seldom long enough for everything to come to rest.
    double pause();

private:
    std::mt19937_64 m_engine;
};

/// A random day; the same for the same seed.
template <typename Act>
Trail<Act> makeDay(std::uint64_t seed, std::size_t count, std::span<const Habit<Act>> habits)
{
    unsigned sum = 0;
    for (const auto &habit : habits)
        sum += habit.weight;
    const auto chooseAct = [habits](unsigned rest) {
        auto habit = habits.begin();
        for (; rest >= habit->weight; ++habit)
            rest -= habit->weight;
        return habit->act;
    };
    Chance chance{seed};
    Trail<Act> day;
    day.reserve(count);
    while (day.size() < count) {
        Event<Act> event;
        event.act = chooseAct(chance.below(sum));
        event.choice = chance.below(1U << 16);
        event.x = chance.fraction();
        event.y = chance.fraction();
        event.endsTurn = chance.below(4) != 0;
        event.pause = chance.pause();
        day.push_back(event);
    }
    return day;
}

template <typename Act> QString describe(const Event<Act> &event, std::span<const Habit<Act>> habits)
{
    for (const auto &habit : habits) {
        if (habit.act == event.act)
            return QStringLiteral("%1 (way %2, %3, %4)%5, then wait %6 s")
                .arg(QLatin1StringView(habit.name))
                .arg(event.choice)
                .arg(event.x, 0, 'g', 17)
                .arg(event.y, 0, 'g', 17)
                .arg(event.endsTurn ? QString() : QStringLiteral(" in the same turn"))
                .arg(event.pause, 0, 'g', 17);
    }
    return {};
}

/// What `shorten` does, with the number of questions that it may still ask.
template <typename Act> class Shortener
{
public:
    using Fails = std::function<bool(const Trail<Act> &)>;

    Shortener(Trail<Act> trail, Fails fails, int limit)
        : m_trail(std::move(trail))
        , m_fails(std::move(fails))
        , m_left(limit)
    { }

    Trail<Act> run()
    {
        for (std::size_t chunk = std::max<std::size_t>(m_trail.size() / 2, 1); chunk > 0;) {
            if (!removeChunks(chunk))
                chunk /= 2;
        }
        simplify();
        return m_trail;
    }

private:
    bool accept(Trail<Act> candidate)
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
            Trail<Act> candidate(m_trail.begin(), m_trail.begin() + std::ptrdiff_t(from));
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
            Trail<Act> candidate = m_trail;
            candidate[index].pause = 0;
            accept(std::move(candidate));
            candidate = m_trail;
            candidate[index].endsTurn = true;
            accept(std::move(candidate));
        }
    }

    Trail<Act> m_trail;
    const Fails m_fails;
    int m_left;
};

/// The trail without everything that it fails without: no single event of the result can be left out, and no
/// pause dropped, unless `fails` was asked `limit` times before that was sure. `fails` must hold for `trail`
/// itself.
template <typename Act>
Trail<Act> shorten(Trail<Act> trail, const typename Shortener<Act>::Fails &fails, int limit = 20000)
{
    return Shortener<Act>{std::move(trail), fails, limit}.run();
}

/// The complaint without the numbers and names in it: what fails in the same way has the same.
QString kindOf(QString complaint);

/// The number in the environment's variable, if it is one.
std::size_t numberFrom(const char *variable, std::size_t fallBack);

/// Tells of the day that failed, with the shortest trail that fails in the same way. `play` answers the first
/// failure of a trail, if there is one.
template <typename Act, typename Play>
std::string report(
    std::uint64_t seed, Trail<Act> day, const Failure &failure, Play play, std::span<const Habit<Act>> habits)
{
    day.resize(failure.index + 1);
    const QString kind = kindOf(failure.complaint);
    const Trail<Act> trail = shorten<Act>(day, [&](const Trail<Act> &candidate) {
        const std::optional<Failure> found = play(candidate);
        return found && kindOf(found->complaint) == kind;
    });
    QString text = QStringLiteral("After %1 events of the day with seed %2: %3\nThe shortest trail to it:\n")
                       .arg(failure.index + 1)
                       .arg(seed)
                       .arg(failure.complaint);
    for (const auto &event : trail)
        text += QStringLiteral("  ") + describe(event, habits) + u'\n';
    if (const std::optional<Failure> again = play(trail))
        text += QStringLiteral("and there: %1\n").arg(again->complaint);
    return text.toStdString();
}

} // namespace brindle::trails
