// SPDX-License-Identifier: MIT
#include "presentation/OnboardingPresentation.h"

#include <cmath>

namespace stowpocket {
namespace {

constexpr double emblemStartOffset = -30;
constexpr double glowFaintest = 0.08;
constexpr double glowStrongest = 0.25;
constexpr double hiddenPointOffset = 8;
constexpr double getStartedHiddenScale = 0.9;
constexpr double getStartedGlowingScale = 1.02;
constexpr double startUsingHiddenScale = 0.88;
constexpr double ringStrokeOpacity = 0.3;
constexpr double shimmerWidth = 0.4;   // of the button's
constexpr double shimmerBefore = 0.2;  // of the button's width, before its leading edge, where the band sets out

OnboardingPresentation::Point point(double visible) {
    return {.opacity = visible, .offset = std::lerp(hiddenPointOffset, 0.0, visible)};
}

}  // namespace

OnboardingPresentation onboardingPresentation(const OnboardingState& state) {
    const double left = state.currentScreen;
    const double getStartedShownScale = std::lerp(1.0, getStartedGlowingScale, state.glowPulse);
    return {
        .opacity = state.appeared,
        .welcome = {.opacity = 1 - left, .shift = -left},
        .closing = {.opacity = left, .shift = 1 - left},
        .emblemOffset = std::lerp(emblemStartOffset, 0.0, state.iconLanded),
        .emblemGlow = std::lerp(glowFaintest, glowStrongest, state.glowPulse),
        .titleOpacity = state.titleVisible,
        .points = {point(state.bullet1Visible), point(state.bullet2Visible), point(state.bullet3Visible)},
        .getStarted = {.opacity = state.buttonVisible,
                       .scale = std::lerp(getStartedHiddenScale, getStartedShownScale, state.buttonVisible)},
        .ringOpacity = ringStrokeOpacity * state.glowOpacity,
        .circleTrim = state.circleTrim,
        .checkmarkTrim = state.checkmarkTrim,
        .headlineOpacity = state.headlineVisible,
        .subtextOpacity = state.subtextVisible,
        .previewOpacity = state.previewVisible,
        .startUsing = {.opacity = state.button2Visible,
                       .scale = std::lerp(startUsingHiddenScale, 1.0, state.button2Visible)},
        .shimmerPhase = state.shimmerPhase,
    };
}

Shimmer shimmer(double width, double phase) {
    const double band = shimmerWidth * width;
    return {.leadingEdge = (width + band) * phase - shimmerBefore * width, .width = band};
}

}  // namespace stowpocket
