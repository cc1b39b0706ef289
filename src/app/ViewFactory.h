// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Popover.h"

#include <functional>
#include <memory>

namespace stowpocket {

class ShelfViewModel;

/// Makes the windows of the program with their views inside. Nothing heavy is built before its window is first
/// shown. Main thread.
class ViewFactory {
public:
    virtual ~ViewFactory() = default;
    [[nodiscard]] virtual std::unique_ptr<Popover> makeShelfPopover(std::shared_ptr<ShelfViewModel> viewModel,
                                                                    std::function<void()> onOpenSettings,
                                                                    std::function<void()> onQuit) = 0;
};

}  // namespace stowpocket
