// SPDX-License-Identifier: MIT
#pragma once

#include "views/controls/Drawing.h"
#include "views/controls/Motion.h"

#include <functional>
#include <memory>
#include <optional>

namespace stowpocket {

class OnboardingClosingScreen;
class OnboardingWelcomeScreen;
class PreferenceStore;
struct OnboardingMoment;

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
