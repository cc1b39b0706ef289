// SPDX-License-Identifier: MIT
#include "views/QtViewFactory.h"

#include "platform/qt/QtWindow.h"
#include "views/ShelfView.h"

namespace stowpocket {
namespace {

constexpr QSize settingsSize{450, 520};
constexpr QSize onboardingSize{520, 420};

/// What the program is for, and a button that ends the first run.
std::unique_ptr<QWidget> welcome(std::function<void()> onComplete) {
    auto view = std::make_unique<QWidget>();
    constexpr int spacing = 16;
    constexpr int buttonWidth = 140;
    Button* const start = Button::bordered(QStringLiteral("Get Started"), {.pointSize = 13}, std::move(onComplete));
    start->setMinimumWidth(buttonWidth);
    compose(*view,
            vstack(spacing, Spacer{},
                   hstack(0, Spacer{}, symbol("tray.and.arrow.down", {.pointSize = 48, .role = ColorRole::accent}),
                          Spacer{}),
                   hstack(0, Spacer{},
                          text(QStringLiteral("Drag files onto the icon in the bar. They wait there for you."),
                               {.pointSize = 13}),
                          Spacer{}),
                   hstack(0, Spacer{}, start, Spacer{}), Spacer{}));
    return view;
}

}  // namespace

std::unique_ptr<Popover> QtViewFactory::makeShelfPopover(std::shared_ptr<ShelfViewModel> viewModel,
                                                         std::function<void()> onOpenSettings,
                                                         std::function<void()> onQuit) {
    ShelfView::Dependencies dependencies{std::move(viewModel), std::move(onOpenSettings), std::move(onQuit),
                                         platform_.itemProviders, platform_.startFileDrag};
    return platform_.makePopover(
        [dependencies = std::move(dependencies)] { return std::make_unique<ShelfView>(dependencies); });
}

std::unique_ptr<Window> QtViewFactory::makeSettingsWindow(std::shared_ptr<ShelfViewModel> /*viewModel*/,
                                                          std::shared_ptr<UpdaterController> /*updaterController*/) {
    return std::make_unique<QtWindow>(QStringLiteral("stowpocket Settings"), settingsSize, QtWindow::Level::normal,
                                      std::make_unique<QWidget>());
}

std::unique_ptr<Window> QtViewFactory::makeOnboardingWindow(std::function<void()> onComplete) {
    return std::make_unique<QtWindow>(QStringLiteral("stowpocket"), onboardingSize, QtWindow::Level::floating,
                                      welcome(std::move(onComplete)));
}

}  // namespace stowpocket
