// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/Geometry.h"
#include "presentation/Movement.h"

#include <array>
#include <optional>
#include <span>
#include <vector>

namespace stowpocket {

/// What moves in the first-run window. Two-way properties go from 0, false, to 1, true.
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

/// That long after its timeline began, a property sets out for a new value.
struct OnboardingStep {
    Seconds delay;
    double OnboardingState::*property;
    double endValue;
    Movement movement;
};

/// Begins when the window is first shown.
[[nodiscard]] std::span<const OnboardingStep> welcomeTimeline();
/// Begins when "Get Started" is pressed, which may be before the end of the other one.
[[nodiscard]] std::span<const OnboardingStep> closingTimeline();

/// Where the two timelines stand.
struct OnboardingMoment {
    Seconds sinceShown{0};
    std::optional<Seconds> sinceGetStarted;
};

[[nodiscard]] OnboardingState onboardingState(const OnboardingMoment& moment);
/// What `moment` comes to at last: every value that its timelines set, at once.
[[nodiscard]] OnboardingState onboardingEndState(const OnboardingMoment& moment);

/// How long the picture of `moment` may stay until the next one is due: shorter while something enters than while
/// there are only slow repeated movements, whose steps would not be seen. None when nothing will move any more.
[[nodiscard]] std::optional<Seconds> timeToNextFrame(const OnboardingMoment& moment);

/// How the parts of the first-run window are shown at one moment. Opacities are from 0 to 1, offsets in points.
struct OnboardingPresentation {
    struct Screen {
        double opacity = 0;
        /// To the trailing side, in widths of the screen.
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

/// The band of light that sweeps over a button of `width`: from just before its leading edge to just behind its
/// trailing edge.
struct Shimmer {
    double leadingEdge = 0;
    double width = 0;
};
[[nodiscard]] Shimmer shimmer(double width, double phase);

/// A line through points, straight between them.
using Polyline = std::vector<Point>;

/// The first part of the line, `fraction`, from 0 to 1, of its length. Empty when that is nothing.
[[nodiscard]] Polyline trimmed(const Polyline& line, double fraction);

/// The checkmark of the closing screen, drawn into a box of that size from its top left corner.
[[nodiscard]] Polyline onboardingCheckmark(double width, double height);

}  // namespace stowpocket
