// SPDX-License-Identifier: MIT
#pragma once

#include "views/controls/Layer.h"
#include "views/onboarding/OnboardingButton.h"
#include "views/onboarding/OnboardingEmblem.h"
#include "views/onboarding/OnboardingPointView.h"

#include <array>
#include <functional>

namespace stowpocket {

/// What the program is for, in three points.
class OnboardingWelcomeScreen : public Layer {
public:
    explicit OnboardingWelcomeScreen(std::function<void()> onGetStarted);
    void evaluate(const OnboardingPresentation& shown);
    [[nodiscard]] QWidget& button() { return *getStarted_; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    OnboardingEmblem emblem_;
    OnboardingPresentation shown_;
    Layer* title_;
    std::array<OnboardingPointView*, 3> points_;
    OnboardingButton* getStarted_;
};

}  // namespace stowpocket
