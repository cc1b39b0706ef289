// SPDX-License-Identifier: MIT
#include "presentation/AnimationCurve.h"
#include "presentation/OnboardingPresentation.h"
#include "presentation/Polyline.h"

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

/// Follows the equation of motion in small steps instead of its solution.
TEST(AnimationCurveTest, theSpringObeysItsEquation) {
    constexpr Spring spring{.response = 0.6, .dampingFraction = 0.7};
    const double omega = 2 * std::numbers::pi / 0.6;
    const auto acceleration = [&](double x, double v) { return omega * omega * (1 - x) - 2 * 0.7 * omega * v; };
    constexpr double step = 1e-4;
    double x = 0;
    double v = 0;
    for (int count = 0; count < 10'000; ++count) {
        ASSERT_NEAR(spring.position(count * step), x, 1e-5) << count * step;
        const double middle = v + acceleration(x, v) * step / 2;
        x += middle * step;
        v += acceleration(x - middle * step / 2, middle) * step;
    }
    for (double later = 0; later < 1; later += 0.01)
        EXPECT_NEAR(spring.position(spring.settlingTime() + later), 1, 1e-3);
}

/// The value of a property at one time of its timeline, and the closed formula for it.
struct Sample {
    double State::*property;
    double time;
    double value;
};

TEST(OnboardingTimelineTest, welcomesStepByStep) {
    for (const auto& [property, time, value] : {
             Sample{&State::appeared, 0.1, easeOut(0.1 / 0.3)},
             Sample{&State::iconLanded, 0.2, 0},
             Sample{&State::iconLanded, 0.5, Spring{0.6, 0.7}.position(0.3)},
             Sample{&State::iconLanded, 3, 1},
             Sample{&State::titleVisible, 0.5, 0},
             Sample{&State::titleVisible, 0.6, easeOut(0.25)},
             Sample{&State::bullet1Visible, 0.8, easeOut(0.1 / 0.35)},
             Sample{&State::bullet2Visible, 0.95, easeOut(0.1 / 0.35)},
             Sample{&State::bullet3Visible, 1.1, easeOut(0.1 / 0.35)},
             Sample{&State::bullet3Visible, 1.4, 1},
             Sample{&State::buttonVisible, 1.2, 0},
             Sample{&State::buttonVisible, 1.35, easeOut(0.5)},
             Sample{&State::glowPulse, 1.3, 0},
             Sample{&State::glowPulse, 1.8, easeInOut(0.25)},
             Sample{&State::glowPulse, 3.3, 1},
             Sample{&State::glowPulse, 4.8, easeInOut(0.25)},
             Sample{&State::currentScreen, 60, 0},
             Sample{&State::circleTrim, 60, 0},
         })
        EXPECT_NEAR(onboardingState({Seconds(time), {}}).*property, value, 1e-6) << time;
}

TEST(OnboardingTimelineTest, closesStepByStepFromThePressOn) {
    for (const auto& [property, time, value] : {
             Sample{&State::currentScreen, 0.1, easeInOut(0.25)},
             Sample{&State::currentScreen, 0.4, 1},
             Sample{&State::circleTrim, 0.5, 0},
             Sample{&State::circleTrim, 0.6, easeOut(0.25)},
             Sample{&State::checkmarkTrim, 0.9, 0},
             Sample{&State::checkmarkTrim, 1.05, easeOut(0.5)},
             Sample{&State::glowOpacity, 1.2, 0.3},
             Sample{&State::glowOpacity, 1.5, 0.3 + 0.7 * easeInOut(0.25)},
             Sample{&State::glowOpacity, 2.4, 1},
             Sample{&State::glowOpacity, 3.6, 0.3},
             Sample{&State::headlineVisible, 1.4, easeOut(0.25)},
             Sample{&State::subtextVisible, 1.6, easeOut(0.25)},
             Sample{&State::previewVisible, 1.8, easeOut(0.25)},
             Sample{&State::button2Visible, 2.2, easeInOut(1 / 3.0)},
             Sample{&State::shimmerPhase, 2.3, 0},
             Sample{&State::shimmerPhase, 2.8, 0.25},
             Sample{&State::shimmerPhase, 4.8, 0.25},
             Sample{&State::bullet3Visible, 2.0, 1},
         })
        EXPECT_NEAR(onboardingState({Seconds(time + 0.7), Seconds(time)}).*property, value, 1e-6) << time;
}

TEST(OnboardingTimelineTest, asksForFramesOnlyWhileSomethingMoves) {
    const auto wait = [](double shown, std::optional<Seconds> pressed = {}) {
        return timeToNextFrame({Seconds(shown), pressed}).value().count();
    };
    EXPECT_NEAR(wait(0.1), 1 / 60.0, 1e-9);
    EXPECT_NEAR(wait(10), 1 / 20.0, 1e-9) << "only the slow glow is left";
    EXPECT_NEAR(wait(0.8, Seconds(0.42)), 0.08, 1e-9) << "a rest before the circle is drawn";
    EXPECT_NEAR(wait(20, Seconds(10)), 1 / 30.0, 1e-9);
}

TEST(OnboardingPresentationTest, movesPartsByTheirNumbers) {
    const OnboardingPresentation before = onboardingPresentation({});
    const OnboardingPresentation after = onboardingPresentation(onboardingEndState({}));
    for (const auto& [shown, offset, glow, point, scale] :
         {std::tuple{before, -30.0, 0.08, 8.0, 0.9}, {after, 0.0, 0.25, 0.0, 1.02}}) {
        EXPECT_EQ(shown.emblemOffset, offset);
        EXPECT_DOUBLE_EQ(shown.emblemGlow, glow);
        EXPECT_EQ(shown.points[2].offset, point);
        EXPECT_DOUBLE_EQ(shown.getStarted.scale, scale);
    }
    EXPECT_EQ(before.startUsing.scale, 0.88);
    EXPECT_DOUBLE_EQ(before.ringOpacity, 0.3 * 0.3);

    const OnboardingPresentation switching = onboardingPresentation({.currentScreen = 0.25});
    EXPECT_EQ(switching.welcome.shift, -0.25);
    EXPECT_EQ(switching.welcome.opacity, 0.75);
    EXPECT_EQ(switching.closing.shift, 0.75);
    EXPECT_EQ(switching.closing.opacity, 0.25);

    EXPECT_DOUBLE_EQ(shimmer(200, 0).width, 80);
    EXPECT_DOUBLE_EQ(shimmer(200, 0).leadingEdge, -80) << "not on the button yet";
    EXPECT_DOUBLE_EQ(shimmer(200, 0.25).leadingEdge + 40, 0.25 * 280 - 40);
    EXPECT_DOUBLE_EQ(shimmer(200, 1).leadingEdge, 200) << "just gone";
}

void expectEnd(const Polyline& line, double x, double y) {
    ASSERT_FALSE(line.empty());
    EXPECT_NEAR(line.back().x, x, 1e-9);
    EXPECT_NEAR(line.back().y, y, 1e-9);
}

TEST(OnboardingCheckmarkTest, isDrawnByShareOfItsLength) {
    const Polyline mark = onboardingCheckmark(72, 72);
    const double first = std::hypot(14.4, 10.8);
    const double second = std::hypot(23.76, 25.2);
    const double whole = first + second;
    EXPECT_TRUE(trimmed(mark, 0).empty());
    EXPECT_EQ(trimmed(mark, 1e-9).front(), (Point{15.84, 36}));
    expectEnd(trimmed(mark, first / whole / 2), 23.04, 41.4);
    expectEnd(trimmed(mark, first / whole), 30.24, 46.8);
    expectEnd(trimmed(mark, (first + second / 4) / whole), std::lerp(30.24, 54, 0.25), std::lerp(46.8, 21.6, 0.25));
    expectEnd(trimmed(mark, 1), 54, 21.6);
}

}  // namespace
}  // namespace stowpocket
