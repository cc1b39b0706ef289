// SPDX-License-Identifier: MIT
#include "presentation/Movement.h"

#include "presentation/AnimationCurve.h"

#include <cmath>

namespace stowpocket {

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
