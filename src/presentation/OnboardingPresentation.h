// SPDX-License-Identifier: MIT
#pragma once

#include "presentation/OnboardingTimeline.h"

#include <array>

namespace stowpocket {

/// How the parts of the first-run window are shown at one moment. Opacities are from 0 to 1, offsets in points.
struct OnboardingPresentation {
    struct Screen {
        double opacity = 0;
        /// To the trailing side, in widths of the screen.
        double shift = 0;
    };
    struct Point {
        double opacity = 0;
        /// Downward.
        double offset = 0;
    };
    struct Button {
        double opacity = 0;
        double scale = 1;
    };

    /// Of everything in the window.
    double opacity = 0;
    Screen welcome;
    Screen closing;

    double emblemOffset = 0;  ///< downward
    double emblemGlow = 0;    ///< the opacity of its glow
    double titleOpacity = 0;
    std::array<Point, 3> points;
    Button getStarted;

    double ringOpacity = 0;
    double circleTrim = 0;
    double checkmarkTrim = 0;
    double headlineOpacity = 0;
    double subtextOpacity = 0;
    double previewOpacity = 0;
    Button startUsing;
    double shimmerPhase = 0;
};

[[nodiscard]] OnboardingPresentation onboardingPresentation(const OnboardingState& state);

/// The band of light that sweeps over a button of `width`: from just before its leading edge to just behind its
/// trailing edge.
struct Shimmer {
    double leadingEdge = 0;
    double width = 0;
};
[[nodiscard]] Shimmer shimmer(double width, double phase);

}  // namespace stowpocket
