// SPDX-License-Identifier: MIT
#pragma once

#include "views/controls/Compose.h"
#include "views/controls/Drawing.h"
#include "views/onboarding/OnboardingButton.h"
#include "views/onboarding/OnboardingParts.h"

#include <array>
#include <functional>

namespace stowpocket {

/// The size of the first-run window's content.
inline constexpr int onboardingWidth = 520;
inline constexpr int onboardingHeight = 420;
inline constexpr double onboardingCornerRadius = 20;

/// Shows in three points what the program is for.
class OnboardingWelcomeScreen : public FadingView {
public:
    explicit OnboardingWelcomeScreen(std::function<void()> onGetStarted);
    void setPresentation(const OnboardingPresentation& shown);
    [[nodiscard]] QWidget& button() { return *getStarted_; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    OnboardingEmblem emblem_;
    OnboardingPresentation shown_;
    FadingView* title_;
    std::array<OnboardingPointView*, 3> points_;
    OnboardingButton* getStarted_;
};

/// Shows where the icon is from now on and what it looks like.
class OnboardingClosingScreen : public FadingView {
public:
    explicit OnboardingClosingScreen(std::function<void()> onComplete);
    void setPresentation(const OnboardingPresentation& shown);
    [[nodiscard]] QWidget& button() { return *startUsing_; }

private:
    OnboardingBadge* badge_;
    FadingView* headline_;
    FadingView* subtext_;
    FadingView* preview_;
    OnboardingButton* startUsing_;
};

}  // namespace stowpocket
