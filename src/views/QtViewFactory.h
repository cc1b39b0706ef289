// SPDX-License-Identifier: MIT
#pragma once

#include "platform/qt/QtWindow.h"
#include "services/Windows.h"
#include "views/settings/SettingsView.h"
#include "views/shelf/ShelfContentView.h"

namespace stowpocket {

/// Creates a view when its window is first shown.
using MakeContent = std::function<std::unique_ptr<QWidget>()>;

/// The program's windows with Qt views in them. The views know nothing about the window system: whatever hosts them,
/// reads drops and starts drags is passed in.
class QtViewFactory : public ViewFactory {
public:
    struct Platform {
        std::function<std::unique_ptr<Popover>(MakeContent)> makePopover;
        DropReader drops;
        TileServices tiles;
        SettingsServices settings;
        /// Creates native windows. If it is empty, the toolkit's windows are used.
        std::function<std::unique_ptr<Window>(const QString& title, const QSize& contentSize, QtWindow::Level level,
                                              std::unique_ptr<QWidget> content)>
            makeWindow = {};
        /// Whether translucent pixels of the toolkit's windows show what is behind them; may be empty.
        std::function<bool()> blendsWindows = {};
        /// Runs its argument once the icon is on the screen, so that the first-run window does not delay the icon. If
        /// it is empty, that window does not wait.
        std::function<void(std::function<void()>)> whenIconStands = {};
    };

    explicit QtViewFactory(Platform platform) : platform_(std::move(platform)) {}

    [[nodiscard]] std::unique_ptr<Popover> makeShelfPopover(std::shared_ptr<ShelfViewModel> viewModel,
                                                            std::function<void()> onOpenSettings,
                                                            std::function<void()> onQuit) override;

    [[nodiscard]] std::unique_ptr<Window>
    makeSettingsWindow(std::shared_ptr<ShelfViewModel> viewModel,
                       std::shared_ptr<UpdaterController> updaterController) override;
    [[nodiscard]] std::unique_ptr<Window> makeOnboardingWindow(PreferenceStore& preferences,
                                                               std::function<void()> onComplete) override;

private:
    [[nodiscard]] std::unique_ptr<Window> makeOnboarding(PreferenceStore& preferences,
                                                         std::function<void()> onComplete) const;
    [[nodiscard]] std::unique_ptr<Window> makeWindow(const QString& title, const QSize& contentSize,
                                                     QtWindow::Level level, std::unique_ptr<QWidget> content) const;

    const Platform platform_;
};

}  // namespace stowpocket
