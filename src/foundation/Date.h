#pragma once

// moc of Qt 6.4 does not understand this header.
#ifndef Q_MOC_RUN
#include <compare>
#endif
#include <limits>

namespace brindle {

/// A moment of wall time, in seconds as a double.
///
/// A plain value; the difference of two dates is a number of seconds. `Scheduler::now()` is where dates
/// come from. Comparisons with `distantPast()` behave as one would hope: everything is later.
class Date
{
public:
    constexpr Date() = default;

    static constexpr Date fromSecondsSince1970(double seconds) { return Date{seconds}; }
    static constexpr Date fromReferenceSeconds(double seconds) { return Date{seconds + referenceOffset}; }
    static constexpr Date distantPast() { return Date{-std::numeric_limits<double>::infinity()}; }

    constexpr double secondsSince1970() const { return m_seconds; }
    /// Seconds since the start of 2001, UTC: the epoch that drawings animate by.
    constexpr double referenceSeconds() const { return m_seconds - referenceOffset; }

    constexpr auto operator<=>(const Date &) const = default;
    friend constexpr double operator-(Date later, Date earlier)
    {
        return later.m_seconds - earlier.m_seconds;
    }
    friend constexpr Date operator+(Date date, double seconds) { return Date{date.m_seconds + seconds}; }
    friend constexpr Date operator-(Date date, double seconds) { return Date{date.m_seconds - seconds}; }

private:
    static constexpr double referenceOffset = 978307200.0;

    explicit constexpr Date(double seconds) : m_seconds(seconds) { }

    double m_seconds = 0;
};

} // namespace brindle
