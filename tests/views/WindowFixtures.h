// SPDX-License-Identifier: MIT
#pragma once

#include "app/DesktopShortcuts.h"
#include "app/Settings.h"
#include "fakes/FakeInput.h"
#include "fakes/FakeUpdates.h"
#include "ShelfViewFixture.h"
#include "updates/UpdaterController.h"
#include "views/controls/Choices.h"
#include "views/onboarding/OnboardingView.h"
#include "views/settings/SettingsView.h"
#include "views/settings/ShortcutViews.h"

namespace stowpocket {

/// The settings over a real shelf and real updates, both on fakes, in a window of their size.
struct SettingsViewFixture : ShelfViewFixture {
    SettingsViewFixture() { registerPreferenceDefaults(preferences); }

    void openSettings(std::shared_ptr<ShelfViewModel> model) {
        delete settings;
        settings = new SettingsView(
            {{core, monitors, loginItem, [this](const auto& url) { opened = url; }, {}, makerOfDesktopShortcuts()},
             std::move(model),
             updater});
        settings->setParent(&host);
        host.resize(450, 520);
        settings->resize(host.size());
        host.show();
        settings->show();
        host.activateWindow();
        QApplication::processEvents();
    }
    void openTab(const char* name) { click(named<ChoiceButton>(host, name)); }
    [[nodiscard]] ShortcutButton& shortcut(std::size_t index) { return *visible<ShortcutButton>(host).at(index); }

    std::function<std::shared_ptr<DesktopShortcuts>()> makerOfDesktopShortcuts() {
        if (!shortcutDesktop)
            return {};
        return [this] {
            return DesktopShortcuts::make({core, clipboard, desktopSettings, [this] { return hotkeySource; },
                                           [](std::uint32_t key) { return key == 1 ? "s" : "d"; }, *shortcutDesktop,
                                           "stowpocket"});
        };
    }

    FakeEventMonitors monitors;
    FakeLoginItem loginItem;
    FakeFeedSession feed;
    FakeAlerts alerts;
    std::shared_ptr<UpdaterController> updater =
        UpdaterController::make({core, feed, alerts, [] { return std::make_unique<FakeUpdateFramework>(); }});
    std::string opened;
    /// None where the window system gives shortcuts.
    std::optional<ShortcutDesktop> shortcutDesktop;
    HotkeySource hotkeySource = HotkeySource::none;
    std::shared_ptr<FakeDesktopSettings> desktopSettings = std::make_shared<FakeDesktopSettings>();
    SettingsView* settings = nullptr;
};

/// Time that passes only when a test says so, frame by frame.
struct FakeFrameClock : FrameClock {
    [[nodiscard]] Seconds now() const override { return now_; }
    void callAfter(Seconds delay, std::function<void()> frame) override {
        due_ = now_ + delay;
        frame_ = std::move(frame);
    }
    void stop() override { frame_ = nullptr; }

    /// Returns how many frames were drawn in that time.
    int advance(Seconds time) {
        int frames = 0;
        const Seconds end = now_ + time;
        for (; frame_ && due_ <= end; ++frames) {
            now_ = due_;
            std::exchange(frame_, nullptr)();
        }
        now_ = end;
        return frames;
    }
    [[nodiscard]] bool isRunning() const { return frame_ != nullptr; }

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
    /// Null when it is not on the screen.
    [[nodiscard]] QAbstractButton* getStarted() { return named<QAbstractButton>(view, "Get Started"); }
    [[nodiscard]] QAbstractButton* startUsing() { return named<QAbstractButton>(view, "Start Using stowpocket"); }
    [[nodiscard]] QPoint middle(const QWidget& widget) const { return widget.mapTo(&view, widget.rect().center()); }

    LayeredPreferenceStore preferences;
    FakeFrameClock* clock;
    int completed = 0;
    OnboardingView view;
};

}  // namespace stowpocket
