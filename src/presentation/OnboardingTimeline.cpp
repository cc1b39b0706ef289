// SPDX-License-Identifier: MIT
#include "presentation/OnboardingTimeline.h"

#include <algorithm>
#include <array>

namespace stowpocket {
namespace {

using namespace std::chrono_literals;
using State = OnboardingState;
using Reversing = Movement::Reversing;

constexpr Seconds quickFrame{1.0 / 60};
constexpr Seconds sweepFrame{1.0 / 30};
/// What breathes changes by less than one level of brightness from one of these to the next.
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

/// Once the welcome screen leaves, what still falls due on it is not waited for.
std::optional<Seconds> timeToNextFrame(const OnboardingMoment& moment) {
    if (!moment.sinceGetStarted)
        return timeToNextFrame(welcomeSteps, moment.sinceShown);
    return timeToNextFrame(closingSteps, *moment.sinceGetStarted);
}

}  // namespace stowpocket
