// SPDX-License-Identifier: MIT
#pragma once

#include "views/controls/Layer.h"
#include "views/onboarding/OnboardingBadge.h"
#include "views/onboarding/OnboardingButton.h"

#include <functional>

namespace stowpocket {

/// Where the icon is from now on, and what it looks like.
class OnboardingClosingScreen : public Layer {
public:
    explicit OnboardingClosingScreen(std::function<void()> onComplete);
    void evaluate(const OnboardingPresentation& shown);
    [[nodiscard]] QWidget& button() { return *startUsing_; }

private:
    OnboardingBadge* badge_;
    Layer* headline_;
    Layer* subtext_;
    Layer* preview_;
    OnboardingButton* startUsing_;
};

}  // namespace stowpocket
