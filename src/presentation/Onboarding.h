// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/Values.h"
#include "presentation/Movement.h"

#include <array>
#include <optional>
#include <span>
#include <vector>

namespace stowpocket {

/// The animated properties of the first-run window. Flags go from 0, false, to 1, true.
struct OnboardingState {
    double currentScreen = 0;  ///< 0 is the welcome, 1 the closing screen
    double appeared = 0;
    double iconLanded = 0;
    double titleVisible = 0;
    double bullet1Visible = 0;
    double bullet2Visible = 0;
    double bullet3Visible = 0;
    double buttonVisible = 0;
    double glowPulse = 0;
    double circleTrim = 0;
    double checkmarkTrim = 0;
    double glowOpacity = 0.3;
    double headlineVisible = 0;
    double subtextVisible = 0;
    double previewVisible = 0;
    double button2Visible = 0;
    double shimmerPhase = 0;

    friend bool operator==(const OnboardingState&, const OnboardingState&) = default;
};

/// A property that moves to a new value, a delay after its timeline has begun.
struct OnboardingStep {
    Seconds delay;
    double OnboardingState::*property;
    double endValue;
    Movement movement;
};

/// Begins when the window is first shown.
[[nodiscard]] std::span<const OnboardingStep> welcomeTimeline();
/// Begins when "Get Started" is pressed, possibly before the other timeline has ended.
[[nodiscard]] std::span<const OnboardingStep> closingTimeline();

/// The times of the two timelines.
struct OnboardingMoment {
    Seconds sinceShown{0};
    std::optional<Seconds> sinceGetStarted;
};

[[nodiscard]] OnboardingState onboardingState(const OnboardingMoment& moment);
/// The final state of the timelines of `moment`, without animation.
[[nodiscard]] OnboardingState onboardingEndState(const OnboardingMoment& moment);

/// The time until the frame after `moment`. It is longer while there are only slow repeated movements, whose steps
/// are invisible. None if nothing will move any more.
[[nodiscard]] std::optional<Seconds> timeToNextFrame(const OnboardingMoment& moment);

/// How the parts of the first-run window look at one moment. Opacities are from 0 to 1, offsets in points.
struct OnboardingPresentation {
    struct Screen {
        double opacity = 0;
        /// Towards the trailing side, in widths of the screen.
        double shift = 0;
    };
    struct Bullet {
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
    std::array<Bullet, 3> points;
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

/// The band of light that moves across a button, from before its leading edge to behind its trailing edge.
struct Shimmer {
    double leadingEdge = 0;
    double width = 0;
};
[[nodiscard]] Shimmer shimmer(double width, double phase);

/// A line of straight segments between points.
using Polyline = std::vector<Point>;

/// The first `fraction` of the line, from 0 to 1 of its length. Empty for 0.
[[nodiscard]] Polyline trimmed(const Polyline& line, double fraction);

/// The checkmark of the closing screen in a box of the given size, relative to its top left corner.
[[nodiscard]] Polyline onboardingCheckmark(double width, double height);

}  // namespace stowpocket
