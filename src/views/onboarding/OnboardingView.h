// SPDX-License-Identifier: MIT
#pragma once

#include "views/controls/Compose.h"
#include "views/controls/Drawing.h"
#include "views/controls/Motion.h"
#include "views/onboarding/OnboardingButton.h"
#include "views/onboarding/OnboardingParts.h"

#include <array>
#include <functional>
#include <memory>
#include <optional>

namespace stowpocket {

class PreferenceStore;
struct OnboardingMoment;

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

/// The first-run window's content: a welcome screen and, once "Get Started" is pressed, a closing screen. Time starts
/// when it is first shown, but frames are drawn only while something moves and the window is visible.
class OnboardingView : public FadingView {
public:
    enum class MotionPreference {
        full,
        reduced,  ///< everything is in its place from the beginning
    };

    enum class CloseControl {
        own,
        ofWindow,  ///< the window has its own
    };

    struct Dependencies {
        PreferenceStore& preferences;
        std::unique_ptr<FrameClock> clock;
        MotionPreference motion = MotionPreference::full;
        CloseControl closeControl = CloseControl::own;
        /// May lead to the view's destruction, but not before it returns.
        std::function<void()> onComplete;
    };

    explicit OnboardingView(Dependencies dependencies);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void addCloseControl();
    void getStarted();
    void renderFrame();
    void showMoment(const OnboardingMoment& moment);
    void paintContainer(QPainter& painter) const;
    [[nodiscard]] OnboardingMoment moment() const;

    const Dependencies dependencies_;
    OnboardingWelcomeScreen* welcome_;
    OnboardingClosingScreen* closing_;
    Picture container_;
    std::optional<Seconds> shownAt_;
    std::optional<Seconds> getStartedAt_;
};

}  // namespace stowpocket
