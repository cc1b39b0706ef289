// SPDX-License-Identifier: MIT
#pragma once

#include "views/Layer.h"
#include "views/OnboardingBadge.h"
#include "views/OnboardingButton.h"

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
