// SPDX-License-Identifier: MIT
#include "presentation/Onboarding.h"
#include "presentation/Movement.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

namespace stowpocket {
namespace {

using State = OnboardingState;

TEST(AnimationCurveTest, easesAsTheirControlPointsSay) {
    for (double parameter = 0; parameter <= 1; parameter += 0.0625) {
        const double rest = 1 - parameter;
        const double first = 3 * rest * rest * parameter;
        const double second = 3 * rest * parameter * parameter;
        const double cube = parameter * parameter * parameter;
        EXPECT_NEAR(easeInOut(0.42 * first + 0.58 * second + cube), second + cube, 1e-5);
        EXPECT_NEAR(easeOut(0.58 * second + cube), second + cube, 1e-5);
    }
    EXPECT_EQ(easeOut(2), 1);
}

TEST(AnimationCurveTest, theSpringSwingsAndSettles) {
    constexpr Spring spring{.response = 0.6, .dampingFraction = 0.7};
    const double swing = 2 * std::numbers::pi / 0.6 * std::sqrt(1 - 0.7 * 0.7);
    const double overshoot = std::exp(-0.7 * std::numbers::pi / std::sqrt(1 - 0.7 * 0.7));
    EXPECT_EQ(spring.position(0), 0);
    EXPECT_NEAR(spring.position(std::numbers::pi / swing), 1 + overshoot, 1e-9);
    for (double later = 0; later < 1; later += 0.01)
        EXPECT_NEAR(spring.position(spring.settlingTime() + later), 1, 1e-3);
}

TEST(OnboardingTimelineTest, goesStepByStep) {
    struct Sample {
        double State::*property;
        double shown;  // seconds
        std::optional<Seconds> pressed;
        double value;
    };
    for (const auto& [property, shown, pressed, value] : {
             Sample{&State::appeared, 0.1, {}, easeOut(0.1 / 0.3)},
             Sample{&State::iconLanded, 0.5, {}, Spring{0.6, 0.7}.position(0.3)},
             Sample{&State::bullet3Visible, 1.1, {}, easeOut(0.1 / 0.35)},
             Sample{&State::glowPulse, 1.3, {}, 0},
             Sample{&State::glowPulse, 1.8, {}, easeInOut(0.25)},
             Sample{&State::currentScreen, 0.8, Seconds(0.1), easeInOut(0.25)},
             Sample{&State::checkmarkTrim, 1.75, Seconds(1.05), easeOut(0.5)},
             Sample{&State::glowOpacity, 1.9, Seconds(1.2), 0.3},
             Sample{&State::button2Visible, 3.0, Seconds(2.25), easeInOut(0.5)},
             Sample{&State::bullet3Visible, 2.7, Seconds(2.0), 1},
         })
        EXPECT_NEAR(onboardingState({Seconds(shown), pressed}).*property, value, 1e-6) << shown;
}

TEST(OnboardingTimelineTest, restsWhileNothingMoves) {
    const auto wait = [](double shown, std::optional<Seconds> pressed) {
        return timeToNextFrame({Seconds(shown), pressed}).value().count();
    };
    EXPECT_NEAR(wait(0.1, {}), 1 / 60.0, 1e-9);
    EXPECT_NEAR(wait(0.8, Seconds(0.42)), 0.08, 1e-9) << "until the circle is drawn";
    EXPECT_NEAR(wait(20, Seconds(10)), 1 / 30.0, 1e-9);
}

TEST(OnboardingPresentationTest, slidesFromScreenToScreenAndLightOverTheButton) {
    const OnboardingPresentation switching = onboardingPresentation({.currentScreen = 0.25});
    EXPECT_EQ(switching.welcome.shift, -0.25);
    EXPECT_EQ(switching.welcome.opacity, 0.75);
    EXPECT_EQ(switching.closing.shift, 0.75);
    EXPECT_EQ(switching.closing.opacity, 0.25);
    EXPECT_DOUBLE_EQ(shimmer(200, 0).leadingEdge, -40) << "half of it on the button";
    EXPECT_DOUBLE_EQ(shimmer(200, 1).leadingEdge, 240) << "gone";
}

TEST(OnboardingCheckmarkTest, isDrawnByShareOfItsLength) {
    const Polyline mark = onboardingCheckmark(72, 72);
    EXPECT_TRUE(trimmed(mark, 0).empty());
    const double first = std::hypot(14.4, 10.8);
    const double whole = first + std::hypot(23.76, 25.2);
    for (const auto& [share, x, y] : {std::tuple{1e-12, 15.84, 36.0},
                                      {first / whole / 2, 23.04, 41.4},
                                      {(first / whole + 1) / 2, (30.24 + 54) / 2, (46.8 + 21.6) / 2},
                                      {1.0, 54.0, 21.6}}) {
        EXPECT_NEAR(trimmed(mark, share).back().x, x, 1e-9);
        EXPECT_NEAR(trimmed(mark, share).back().y, y, 1e-9);
    }
}

}  // namespace
}  // namespace stowpocket
