// SPDX-License-Identifier: MIT
#pragma once

#include "app/Settings.h"
#include "services/Preferences.h"
#include "views/onboarding/OnboardingView.h"

#include <QAbstractButton>
#include <QApplication>

namespace stowpocket {

/// Time that passes only when a test says so, frame by frame.
class FakeFrameClock : public FrameClock {
public:
    [[nodiscard]] Seconds now() const override { return now_; }
    void callAfter(Seconds delay, std::function<void()> frame) override {
        due_ = now_ + delay;
        frame_ = std::move(frame);
    }
    void stop() override { frame_ = nullptr; }

    void advance(Seconds time) {
        const Seconds end = now_ + time;
        while (frame_ && due_ <= end) {
            now_ = due_;
            ++frames;
            std::exchange(frame_, nullptr)();
        }
        now_ = end;
    }
    [[nodiscard]] bool isRunning() const { return frame_ != nullptr; }
    int frames = 0;

private:
    Seconds now_{5};
    Seconds due_{};
    std::function<void()> frame_;
};

/// The first-run window on a clock of its own.
struct OnboardingFixture {
    explicit OnboardingFixture(OnboardingView::MotionPreference motion = OnboardingView::MotionPreference::full)
        : clock(new FakeFrameClock),
          view({preferences, std::unique_ptr<FrameClock>(clock), motion, OnboardingView::CloseControl::own,
                [this] { ++completed; }}) {
        view.show();
        QApplication::processEvents();
    }

    /// The button of that name; null when it is not on the screen.
    [[nodiscard]] QAbstractButton* button(const char* name) {
        for (QAbstractButton* const button : view.findChildren<QAbstractButton*>()) {
            const QString shown = button->text().isEmpty() ? button->accessibleName() : button->text();
            if (button->isVisible() && shown == QLatin1String(name))
                return button;
        }
        return nullptr;
    }

    [[nodiscard]] QRect frame(const QWidget& widget) const { return {widget.mapTo(&view, QPoint()), widget.size()}; }

    LayeredPreferenceStore preferences;
    FakeFrameClock* clock;
    int completed = 0;
    OnboardingView view;
};

}  // namespace stowpocket
