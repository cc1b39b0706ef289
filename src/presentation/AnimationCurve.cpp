// SPDX-License-Identifier: MIT
#include "presentation/AnimationCurve.h"

namespace stowpocket {
namespace {

/// A cubic Bézier curve from (0, 0) to (1, 1) by its two control points, which lie point-symmetric to the middle.
constexpr double firstControlTime = 0.42;
constexpr double secondControlTime = 1 - firstControlTime;

double timeAt(double parameter) {
    const double rest = 1 - parameter;
    return 3 * rest * rest * parameter * firstControlTime + 3 * rest * parameter * parameter * secondControlTime +
           parameter * parameter * parameter;
}

double valueAt(double parameter) {
    return parameter * parameter * (3 - 2 * parameter);
}

}  // namespace

double easeInOut(double progress) {
    if (progress <= 0)
        return 0;
    if (progress >= 1)
        return 1;
    double low = 0;
    double high = 1;
    constexpr int halvings = 20;  // a millionth of the way
    for (int halving = 0; halving < halvings; ++halving) {
        const double middle = (low + high) / 2;
        (timeAt(middle) < progress ? low : high) = middle;
    }
    return valueAt((low + high) / 2);
}

}  // namespace stowpocket
