// SPDX-License-Identifier: MIT
#pragma once

#include "presentation/Movement.h"

#include <optional>
#include <span>

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

}  // namespace stowpocket
