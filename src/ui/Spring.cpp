#include "ui/Spring.h"

#include <cmath>
#include <numbers>

namespace brindle {
namespace {

SpringState underdamped(SpringState from, double omega, double zeta, double t)
{
    const double swing = omega * std::sqrt(1 - zeta * zeta);
    const double decay = std::exp(-zeta * omega * t);
    const double cosine = std::cos(swing * t);
    const double sine = std::sin(swing * t);
    const double b = (from.velocity + zeta * omega * from.displacement) / swing;
    const double x = decay * (from.displacement * cosine + b * sine);
    return {x, decay * swing * (b * cosine - from.displacement * sine) - zeta * omega * x};
}

SpringState critical(SpringState from, double omega, double t)
{
    const double decay = std::exp(-omega * t);
    const double b = from.velocity + omega * from.displacement;
    return {decay * (from.displacement + b * t), decay * (from.velocity - omega * b * t)};
}

SpringState overdamped(SpringState from, double omega, double zeta, double t)
{
    const double root = omega * std::sqrt(zeta * zeta - 1);
    const double slow = root - zeta * omega;
    const double fast = -root - zeta * omega;
    const double ofFast = (from.velocity - slow * from.displacement) / (fast - slow);
    const double ofSlow = from.displacement - ofFast;
    const double slowly = ofSlow * std::exp(slow * t);
    const double quickly = ofFast * std::exp(fast * t);
    return {slowly + quickly, slow * slowly + fast * quickly};
}

} // namespace

SpringState springAfter(SpringState state, double response, double dampingFraction, double seconds)
{
    const double omega = 2 * std::numbers::pi / response;
    // This near to critical the other two forms divide by almost nothing.
    if (std::abs(dampingFraction - 1) < 1e-6)
        return critical(state, omega, seconds);
    if (dampingFraction < 1)
        return underdamped(state, omega, dampingFraction, seconds);
    return overdamped(state, omega, dampingFraction, seconds);
}

} // namespace brindle
