// SPDX-License-Identifier: MIT
#pragma once

#include "services/Windows.h"

#include <functional>
#include <memory>

namespace stowpocket {

class PreferenceStore;
class ShelfViewModel;
class UpdaterController;

/// Makes the windows of the program with their views inside. Nothing heavy is built before its window is first
/// shown. Main thread.
class ViewFactory {
public:
    virtual ~ViewFactory() = default;
    [[nodiscard]] virtual std::unique_ptr<Popover> makeShelfPopover(std::shared_ptr<ShelfViewModel> viewModel,
                                                                    std::function<void()> onOpenSettings,
                                                                    std::function<void()> onQuit) = 0;
    /// Titled "stowpocket Settings", closable, of a fixed content size of 450 by 520 points.
    [[nodiscard]] virtual std::unique_ptr<Window>
    makeSettingsWindow(std::shared_ptr<ShelfViewModel> viewModel,
                       std::shared_ptr<UpdaterController> updaterController) = 0;
    /// Without a visible title bar but closable, movable by its background, floating above other windows, of a fixed
    /// content size of 520 by 420 points. The view stores by itself that it was seen, before it calls `onComplete`.
    [[nodiscard]] virtual std::unique_ptr<Window> makeOnboardingWindow(PreferenceStore& preferences,
                                                                       std::function<void()> onComplete) = 0;
};

}  // namespace stowpocket
