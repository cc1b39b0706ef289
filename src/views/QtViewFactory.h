// SPDX-License-Identifier: MIT
#pragma once

#include "platform/qt/QtWindow.h"
#include "services/Windows.h"
#include "views/settings/SettingsView.h"
#include "views/shelf/ShelfContentView.h"

namespace stowpocket {

/// Makes a view when its window is first shown.
using MakeContent = std::function<std::unique_ptr<QWidget>()>;

/// The program's windows with Qt views inside. The views know nothing of the window system: what hosts them, reads
/// drops and starts drags is given.
class QtViewFactory : public ViewFactory {
public:
    struct Platform {
        std::function<std::unique_ptr<Popover>(MakeContent)> makePopover;
        DropReader drops;
        TileServices tiles;
        SettingsServices settings;
        /// Windows of the desktop's own making; where it has none they are the toolkit's.
        std::function<std::unique_ptr<Window>(const QString& title, const QSize& contentSize, QtWindow::Level level,
                                              std::unique_ptr<QWidget> content)>
            makeWindow = {};
        /// Whether translucent pixels of the toolkit's windows show what is behind them.
        std::function<bool()> blendsWindows = {};
        /// Runs what it is given once the icon is on the screen, which the first run's window is not to delay; where
        /// it is left out that window does not wait.
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
