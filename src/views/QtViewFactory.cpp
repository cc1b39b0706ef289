// SPDX-License-Identifier: MIT
#include "views/QtViewFactory.h"

#include "platform/qt/QtImages.h"
#include "platform/qt/QtWindow.h"
#include "views/controls/Motion.h"
#include "views/onboarding/OnboardingView.h"
#include "views/settings/SettingsView.h"
#include "views/shelf/ShelfView.h"

#include <QFile>
#include <QPixmap>

namespace stowpocket {
namespace {

constexpr QSize settingsSize{450, 520};

/// The icon for window lists. It is drawn at every call, since few windows need it.
QIcon programIcon() {
    QIcon icon;
    for (const int side : {16, 32, 48, 64}) {
        QFile drawing(QStringLiteral(":/program.svg"));
        icon.addPixmap(QPixmap::fromImage(svgImage(drawing, QSize(side, side))));
    }
    return icon;
}

}  // namespace

std::unique_ptr<Popover> QtViewFactory::makeShelfPopover(std::shared_ptr<ShelfViewModel> viewModel,
                                                         std::function<void()> onOpenSettings,
                                                         std::function<void()> onQuit) {
    ShelfView::Dependencies dependencies{std::move(viewModel), std::move(onOpenSettings), std::move(onQuit),
                                         platform_.drops, platform_.tiles};
    return platform_.makePopover(
        [dependencies = std::move(dependencies)] { return std::make_unique<ShelfView>(dependencies); });
}

std::unique_ptr<Window> QtViewFactory::makeSettingsWindow(std::shared_ptr<ShelfViewModel> viewModel,
                                                          std::shared_ptr<UpdaterController> updaterController) {
    SettingsDependencies dependencies{platform_.settings, std::move(viewModel), std::move(updaterController)};
    return makeWindow(QStringLiteral("stowpocket Settings"), settingsSize, QtWindow::Level::normal,
                      std::make_unique<SettingsView>(std::move(dependencies)));
}

std::unique_ptr<Window> QtViewFactory::makeOnboardingWindow(PreferenceStore& preferences,
                                                            std::function<void()> onComplete) {
    if (!platform_.whenIconStands)
        return makeOnboarding(preferences, std::move(onComplete));
    return std::make_unique<DeferredWindow>(
        platform_.whenIconStands,
        [this, &preferences, onComplete = std::move(onComplete)] { return makeOnboarding(preferences, onComplete); });
}

std::unique_ptr<Window> QtViewFactory::makeOnboarding(PreferenceStore& preferences,
                                                      std::function<void()> onComplete) const {
    using CloseControl = OnboardingView::CloseControl;
    using MotionPreference = OnboardingView::MotionPreference;
    auto view = std::make_unique<OnboardingView>(OnboardingView::Dependencies{
        .preferences = preferences,
        .clock = std::make_unique<QtFrameClock>(),
        .motion = Motion::isWanted() ? MotionPreference::full : MotionPreference::reduced,
        .closeControl = platform_.makeWindow ? CloseControl::ofWindow : CloseControl::own,
        .onComplete = std::move(onComplete),
    });
    const QSize size = view->size();
    return makeWindow(QStringLiteral("Welcome to stowpocket"), size, QtWindow::Level::floating, std::move(view));
}

/// A floating window has no frame: its view draws everything.
std::unique_ptr<Window> QtViewFactory::makeWindow(const QString& title, const QSize& contentSize,
                                                  QtWindow::Level level, std::unique_ptr<QWidget> content) const {
    if (platform_.makeWindow)
        return platform_.makeWindow(title, contentSize, level, std::move(content));
    const auto frame = level == QtWindow::Level::floating ? QtWindow::Frame::none : QtWindow::Frame::titled;
    auto window = std::make_unique<QtWindow>(title, contentSize, level, std::move(content), frame);
    window->setIcon(programIcon());
    if (frame == QtWindow::Frame::none)
        window->roundCorners(onboardingCornerRadius, platform_.blendsWindows && platform_.blendsWindows());
    return window;
}

}  // namespace stowpocket
