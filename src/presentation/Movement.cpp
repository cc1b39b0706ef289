// SPDX-License-Identifier: MIT
#include "presentation/Movement.h"

#include <cmath>
#include <numbers>

namespace stowpocket {
namespace {

constexpr double settled = 0.001;

/// A cubic Bézier curve from (0, 0) to (1, 1). The first control point has the value 0 and the second one the
/// value 1.
struct Easing {
    double firstControlTime;
    double secondControlTime;
};

double timeAt(const Easing& easing, double parameter) {
    const double rest = 1 - parameter;
    return 3 * rest * rest * parameter * easing.firstControlTime +
           3 * rest * parameter * parameter * easing.secondControlTime + parameter * parameter * parameter;
}

double valueAt(double parameter) {
    return parameter * parameter * (3 - 2 * parameter);
}

double eased(const Easing& easing, double progress) {
    if (progress <= 0)
        return 0;
    if (progress >= 1)
        return 1;
    double low = 0;
    double high = 1;
    constexpr int halvings = 20;  // a millionth of the way
    for (int halving = 0; halving < halvings; ++halving) {
        const double middle = (low + high) / 2;
        (timeAt(easing, middle) < progress ? low : high) = middle;
    }
    return valueAt((low + high) / 2);
}

}  // namespace

double easeInOut(double progress) {
    return eased({.firstControlTime = 0.42, .secondControlTime = 0.58}, progress);
}

double easeOut(double progress) {
    return eased({.firstControlTime = 0, .secondControlTime = 0.58}, progress);
}

/// The damped harmonic oscillator: x'' = omega^2 (1 - x) - 2 dampingFraction omega x'.
double Spring::position(double seconds) const {
    if (seconds <= 0)
        return 0;
    const double omega = 2 * std::numbers::pi / response;
    const double decay = dampingFraction * omega;
    const double swing = omega * std::sqrt(1 - dampingFraction * dampingFraction);
    return 1 - std::exp(-decay * seconds) * (std::cos(swing * seconds) + decay / swing * std::sin(swing * seconds));
}

/// The swings are bounded by two exponential curves, which reach the limit at this time.
double Spring::settlingTime() const {
    const double amplitude = 1 / std::sqrt(1 - dampingFraction * dampingFraction);
    return std::log(amplitude / settled) * response / (2 * std::numbers::pi * dampingFraction);
}

Seconds Movement::duration() const {
    return curve_ == Curve::spring ? Seconds(Spring{time_.count(), dampingFraction_}.settlingTime()) : time_;
}

double Movement::shareOfTime(Seconds elapsed) const {
    const double share = elapsed / duration();
    if (repeats_ == Repeats::never || share <= 0)
        return share;
    const double round = std::floor(share);
    const bool isWayBack = repeats_ == Repeats::backAndForth && std::fmod(round, 2) == 1;
    return isWayBack ? 1 - (share - round) : share - round;
}

double Movement::progress(Seconds elapsed) const {
    const double share = shareOfTime(elapsed);
    if (share <= 0)
        return 0;
    if (share >= 1)
        return 1;
    switch (curve_) {
    case Curve::linear:
        return share;
    case Curve::easeOut:
        return stowpocket::easeOut(share);
    case Curve::easeInOut:
        return stowpocket::easeInOut(share);
    case Curve::spring:
        return Spring{time_.count(), dampingFraction_}.position(share * duration().count());
    }
    return 1;
}

}  // namespace stowpocket
