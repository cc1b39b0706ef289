// SPDX-License-Identifier: MIT
#include "views/QtViewFactory.h"

#include "platform/qt/QtWindow.h"
#include "views/Motion.h"
#include "views/OnboardingView.h"
#include "views/QtFrameClock.h"
#include "views/SettingsView.h"
#include "views/ShelfView.h"

namespace stowpocket {
namespace {

constexpr QSize settingsSize{450, 520};

}  // namespace

std::unique_ptr<Popover> QtViewFactory::makeShelfPopover(std::shared_ptr<ShelfViewModel> viewModel,
                                                         std::function<void()> onOpenSettings,
                                                         std::function<void()> onQuit) {
    ShelfView::Dependencies dependencies{std::move(viewModel), std::move(onOpenSettings), std::move(onQuit),
                                         platform_.drops, platform_.startFileDrag};
    return platform_.makePopover(
        [dependencies = std::move(dependencies)] { return std::make_unique<ShelfView>(dependencies); });
}

std::unique_ptr<Window> QtViewFactory::makeSettingsWindow(std::shared_ptr<ShelfViewModel> viewModel,
                                                          std::shared_ptr<UpdaterController> updaterController) {
    SettingsDependencies dependencies{platform_.settings, std::move(viewModel), std::move(updaterController)};
    return std::make_unique<QtWindow>(QStringLiteral("stowpocket Settings"), settingsSize, QtWindow::Level::normal,
                                      std::make_unique<SettingsView>(std::move(dependencies)));
}

std::unique_ptr<Window> QtViewFactory::makeOnboardingWindow(PreferenceStore& preferences,
                                                            std::function<void()> onComplete) {
    using MotionWish = OnboardingView::MotionWish;
    auto view = std::make_unique<OnboardingView>(OnboardingView::Dependencies{
        .preferences = preferences,
        .clock = std::make_unique<QtFrameClock>(),
        .motion = Motion::isWanted() ? MotionWish::full : MotionWish::reduced,
        .onComplete = std::move(onComplete),
    });
    const QSize size = view->size();
    return std::make_unique<QtWindow>(QStringLiteral("Welcome to stowpocket"), size, QtWindow::Level::floating,
                                      std::move(view), QtWindow::Frame::none);
}

}  // namespace stowpocket
