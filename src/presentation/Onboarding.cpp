// SPDX-License-Identifier: MIT
#include "presentation/Onboarding.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace stowpocket {
namespace {

using namespace std::chrono_literals;
using State = OnboardingState;
using Reversing = Movement::Reversing;

constexpr Seconds quickFrame{1.0 / 60};
constexpr Seconds sweepFrame{1.0 / 30};
/// At 20 frames per second the glow changes by less than one brightness level per frame.
constexpr Seconds breathFrame{1.0 / 20};

constexpr std::array<OnboardingStep, 8> welcomeSteps{{
    {0s, &State::appeared, 1, Movement::easeOut(0.3s)},
    {0.2s, &State::iconLanded, 1, Movement::spring(0.6s, 0.7)},
    {0.5s, &State::titleVisible, 1, Movement::easeOut(0.4s)},
    {0.7s, &State::bullet1Visible, 1, Movement::easeOut(0.35s)},
    {0.85s, &State::bullet2Visible, 1, Movement::easeOut(0.35s)},
    {1.0s, &State::bullet3Visible, 1, Movement::easeOut(0.35s)},
    {1.2s, &State::buttonVisible, 1, Movement::easeOut(0.3s)},
    {1.3s, &State::glowPulse, 1, Movement::easeInOut(2.0s).repeatedForever(Reversing::yes)},
}};

constexpr std::array<OnboardingStep, 9> closingSteps{{
    {0s, &State::currentScreen, 1, Movement::easeInOut(0.4s)},
    {0.5s, &State::circleTrim, 1, Movement::easeOut(0.4s)},
    {0.9s, &State::checkmarkTrim, 1, Movement::easeOut(0.3s)},
    {1.2s, &State::glowOpacity, 1, Movement::easeInOut(1.2s).repeatedForever(Reversing::yes)},
    {1.3s, &State::headlineVisible, 1, Movement::easeOut(0.4s)},
    {1.5s, &State::subtextVisible, 1, Movement::easeOut(0.4s)},
    {1.7s, &State::previewVisible, 1, Movement::easeOut(0.4s)},
    {2.1s, &State::button2Visible, 1, Movement::easeInOut(0.3s)},
    {2.3s, &State::shimmerPhase, 1, Movement::linear(2.0s).repeatedForever(Reversing::no)},
}};

void apply(std::span<const OnboardingStep> timeline, Seconds time, State& state) {
    for (const OnboardingStep& step : timeline) {
        double& value = state.*step.property;
        value += (step.endValue - value) * step.movement.progress(time - step.delay);
    }
}

void finish(std::span<const OnboardingStep> timeline, State& state) {
    for (const OnboardingStep& step : timeline)
        state.*step.property = step.endValue;
}

std::optional<Seconds> timeToNextFrame(const OnboardingStep& step, Seconds time) {
    if (time < step.delay)
        return std::max(step.delay - time, quickFrame);
    if (step.movement.isRepeated())
        return step.movement.isReversing() ? breathFrame : sweepFrame;
    if (time - step.delay < step.movement.duration())
        return quickFrame;
    return std::nullopt;
}

std::optional<Seconds> timeToNextFrame(std::span<const OnboardingStep> timeline, Seconds time) {
    std::optional<Seconds> soonest;
    for (const OnboardingStep& step : timeline) {
        if (const auto wait = timeToNextFrame(step, time))
            soonest = std::min(soonest.value_or(*wait), *wait);
    }
    return soonest;
}

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

OnboardingPresentation::Bullet bullet(double visible) {
    return {.opacity = visible, .offset = std::lerp(hiddenPointOffset, 0.0, visible)};
}

double distance(const Point& from, const Point& to) {
    return std::hypot(to.x - from.x, to.y - from.y);
}

double length(const Polyline& line) {
    double sum = 0;
    for (std::size_t index = 1; index < line.size(); ++index)
        sum += distance(line[index - 1], line[index]);
    return sum;
}

}  // namespace

std::span<const OnboardingStep> welcomeTimeline() {
    return welcomeSteps;
}

std::span<const OnboardingStep> closingTimeline() {
    return closingSteps;
}

OnboardingState onboardingState(const OnboardingMoment& moment) {
    State state;
    apply(welcomeSteps, moment.sinceShown, state);
    if (moment.sinceGetStarted)
        apply(closingSteps, *moment.sinceGetStarted, state);
    return state;
}

OnboardingState onboardingEndState(const OnboardingMoment& moment) {
    State state;
    finish(welcomeSteps, state);
    if (moment.sinceGetStarted)
        finish(closingSteps, state);
    return state;
}

/// Once the welcome screen leaves, its remaining steps need no frames of their own.
std::optional<Seconds> timeToNextFrame(const OnboardingMoment& moment) {
    if (!moment.sinceGetStarted)
        return timeToNextFrame(welcomeSteps, moment.sinceShown);
    return timeToNextFrame(closingSteps, *moment.sinceGetStarted);
}

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
        .points = {bullet(state.bullet1Visible), bullet(state.bullet2Visible), bullet(state.bullet3Visible)},
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

Polyline trimmed(const Polyline& line, double fraction) {
    if (line.empty() || fraction <= 0)
        return {};
    if (fraction >= 1)
        return line;
    double left = length(line) * fraction;
    Polyline part{line.front()};
    for (std::size_t index = 1; index < line.size() && left > 0; ++index) {
        const Point& from = line[index - 1];
        const Point& to = line[index];
        const double piece = distance(from, to);
        const double share = left < piece ? left / piece : 1;
        part.push_back({std::lerp(from.x, to.x, share), std::lerp(from.y, to.y, share)});
        left -= piece;
    }
    return part;
}

Polyline onboardingCheckmark(double width, double height) {
    return {{0.22 * width, 0.5 * height}, {0.42 * width, 0.65 * height}, {0.75 * width, 0.3 * height}};
}

}  // namespace stowpocket
